#pragma once

#include <libxml/tree.h>

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "workbench/probe/xpath_text.h"

namespace probe {

/// The prefixes that stand for namespaces in expressions, one for each.
class XmlPrefixes {
public:
    /// The name as an expression has to write it. `own` is the prefix that the document uses.
    std::string nameFor(std::string_view local, std::string_view own, std::string_view uri) {
        if (uri.empty()) return std::string(local);
        const auto known = byUri_.find(uri);
        if (known != byUri_.end()) return known->second + ":" + std::string(local);
        const std::string wanted(own.empty() ? "d" : own);
        std::string prefix = wanted;
        for (int number = 2; !taken_.insert(prefix).second; ++number)
            prefix = wanted + std::to_string(number);
        byUri_.emplace(uri, prefix);
        return prefix + ":" + std::string(local);
    }

    /// The declarations of those that a path uses.
    std::string declarationsFor(const std::string& path) const {
        std::string declarations;
        for (const auto& [uri, prefix] : byUri_) {
            const bool isUsed = path.find("/" + prefix + ":") != std::string::npos ||
                                path.find("[" + prefix + ":") != std::string::npos ||
                                path.find("@" + prefix + ":") != std::string::npos;
            if (isUsed && prefix != xmlPrefix)
                declarations += (declarations.empty() ? "" : " ") + declarationOf(prefix, uri);
        }
        return declarations;
    }

private:
    static constexpr const char* xmlPrefix = "xml";  // that is known everywhere

    std::map<std::string, std::string, std::less<>> byUri_{
        {reinterpret_cast<const char*>(XML_XML_NAMESPACE), xmlPrefix}};
    std::set<std::string> taken_{xmlPrefix};
};

}  // namespace probe
