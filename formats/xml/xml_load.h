#pragma once

#include <libxml/parser.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "formats/source/ByteSource.h"
#include "formats/source/EndMark.h"
#include "formats/xml/XmlDoc.h"

namespace intake {

/// A document has more nodes than it may have.
class TooManyNodes : public std::runtime_error {
public:
    explicit TooManyNodes(uint64_t most)
        : std::runtime_error("The document has more than " + std::to_string(most) + " nodes") {}
};

constexpr uint64_t LARGEST_XML = 0x7FFFFFFF;  // in bytes: libxml2 counts in int

constexpr uint64_t ANY_NUMBER_OF_NODES = std::numeric_limits<uint64_t>::max();

/// A parsed document, or none and why.
struct LoadedXml {
    XmlDoc document;
    std::string reason;
};

/// Drops text that is white space only, and refuses a document with a DTD or of more than 2 GB;
/// nothing is fetched while parsing. A byte-order mark decides the encoding; then `charset`, when
/// it is one that is known; then what the text says of itself; then it is UTF-8. Once `endMark` is
/// set, it gives up. Attributes that are unwanted may be there or not. Throws what the source
/// throws, TooManyNodes and std::bad_alloc.
LoadedXml loadXml(const ByteSource& source, const EndMark& endMark, const std::string& charset = {},
                  uint64_t mostNodes = ANY_NUMBER_OF_NODES,
                  KeptAttributes attributes = KeptAttributes::ALL);

/// The same by libxml2's parser alone, which reads what is not plain, with all attributes.
LoadedXml parseXml(const ByteSource& source, const EndMark& endMark,
                   const std::string& charset = {}, uint64_t mostNodes = ANY_NUMBER_OF_NODES);

}  // namespace intake
