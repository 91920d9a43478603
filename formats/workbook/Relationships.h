#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// What one part of a package says of the parts that it refers to.
class Relationships final : public XmlEvents {
public:
    struct Target {
        std::string id;
        std::string type;  // the last word of the type's URI, such as "worksheet"
        std::string part;
    };

    /// `source` is the part that refers; empty for the package itself.
    explicit Relationships(std::string_view source);

    /// The part that says what `source` refers to.
    static std::string partFor(std::string_view source);

    /// Null where there is none.
    const Target* byId(std::string_view id) const;
    const Target* byType(std::string_view type) const;

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view) override {}

private:
    std::string resolve(std::string_view target) const;

    std::string folder_;  // of the source, with a slash at its end
    ElementPath path_;
    std::vector<Target> targets_;
};

}  // namespace intake
