#pragma once

#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/ZipPart.h"
#include "formats/xml/ElementChunks.h"
#include "formats/xml/XmlScanner.h"
#include "formats/xml/sax_parse.h"

namespace intake {

/// Reads a large part by the scanner; false when it met something that it does not know.
template <class Events>
bool scanPart(ByteStream& part, std::string_view endTag, Events& events, const EndMark& endMark) {
    using Outcome = typename XmlScanner<Events>::Outcome;
    events.startDocument();
    ElementChunks chunks(part, endTag);
    XmlScanner<Events> scanner(events);
    Outcome outcome = Outcome::SCANNED;
    for (std::string_view chunk; outcome == Outcome::SCANNED && chunks.next(chunk);) {
        endMark.throwIfSet();
        outcome = scanner.scan(chunk);
    }
    return outcome == Outcome::ENOUGH ||
           (outcome == Outcome::SCANNED && chunks.atEnd() && scanner.isComplete());
}

/// Unpacks what is left of a part, which tells whether it is whole.
inline void checkRest(ByteStream& part, const EndMark& endMark) {
    std::array<char, 65536> rest;
    while (part.read(rest.data(), rest.size()) > 0) {
        endMark.throwIfSet();
    }
}

/// Reads a large part: by the scanner where it can, else by the parser. `endTag` ends the elements
/// that the part mostly consists of. Throws WorkbookFault when the part is damaged.
template <class Events>
void readLargePart(const ZipArchive& archive, const ZipEntry& entry, std::string_view endTag,
                   Events& events, const EndMark& endMark) {
    ZipPart part(archive, entry);
    if (scanPart(part, endTag, events, endMark)) {
        checkRest(part, endMark);
        return;
    }
    ZipPart again(archive, entry);
    saxParse(again, events, endMark);
    checkRest(again, endMark);
}

}  // namespace intake
