#pragma once

#include <libxml/parser.h>

#include <memory>
#include <string>
#include <string_view>

#include "formats/source/ByteSource.h"
#include "formats/source/EndMark.h"

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

/// Drops text that is white space only, and refuses a document with a DTD or of more than 2 GB;
/// nothing is fetched while parsing. A byte-order mark decides the encoding; then `charset`, when
/// it is one that is known; then what the text says of itself; then it is UTF-8. Once `endMark` is
/// set, it gives up. Throws what the source throws, and
/// std::bad_alloc.
LoadedXml loadXml(const ByteSource& source, const EndMark& endMark,
                  const std::string& charset = {});

}  // namespace intake
