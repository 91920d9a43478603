#pragma once

#include <stdexcept>

#include "formats/source/ByteStream.h"
#include "formats/source/EndMark.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// Why a document is not read. The text goes on from the document's name.
class XmlFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a document by libxml2. Throws XmlFault when it is not well-formed or has a DTD, which is
/// never read, GivenUp, and whatever `stream` and `events` throw.
void saxParse(ByteStream& stream, XmlEvents& events, const EndMark& endMark);

}  // namespace intake
