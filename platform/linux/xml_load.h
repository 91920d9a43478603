#pragma once

#include <libxml/parser.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/EndMark.h"

namespace intake {

struct XmlDocDeleter {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using XmlDoc = std::unique_ptr<xmlDoc, XmlDocDeleter>;

/// A parsed document, or none and why.
struct LoadedXml {
    XmlDoc document;
    std::string reason;
};

/// Both drop text that is white space only, and refuse a document with a DTD or of more than 2 GB;
/// nothing is fetched while parsing. A byte-order mark decides the encoding; then `charset`, when
/// it is one that is known; then what the text says of itself; then it is UTF-8. Once
/// `endMark` is set, both give up.
LoadedXml loadXmlFile(const std::string& path, const EndMark& endMark);
LoadedXml loadXmlText(std::string_view text, const EndMark& endMark,
                      const std::string& charset = {});

}  // namespace intake
