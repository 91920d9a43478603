#pragma once

#include <libxml/parser.h>

#include <memory>
#include <string>
#include <string_view>

namespace intake {

struct XmlDocDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using XmlDoc = std::unique_ptr<xmlDoc, XmlDocDeleter>;

/// A parsed document, or none and why.
struct LoadedXml {
    XmlDoc document;
    std::string reason;
    bool preservesSpace = false;  // xml:space="preserve" stands somewhere
};

/// Both drop text that is white space only, and refuse a document with a DTD; nothing is fetched
/// while parsing. `charset`, when not empty, goes before what the text says of itself.
LoadedXml loadXmlFile(const std::string& path);
LoadedXml loadXmlText(std::string_view text, const std::string& charset);

}  // namespace intake
