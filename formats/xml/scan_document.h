#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "formats/source/ByteSource.h"
#include "formats/source/EndMark.h"
#include "formats/text/ascii.h"
#include "formats/xml/DocumentScanner.h"

namespace intake {

constexpr size_t USUAL_WINDOW = 128 << 10;

/// Scans a document in pieces of `windowSize` bytes, or more where need be, and tells `receiver` of
/// it. False when it is not of UTF-8 (by its mark, else by `charset`, else by what it says), when
/// it holds anything that the scanner does not know, malformed or not, or once `endMark` is set:
/// then what was told is void, and the document is for the parser to read. Throws what the source
/// and `receiver` throw.
template <class Receiver>
bool scanDocument(const ByteSource& source, const std::string& charset, const EndMark& endMark,
                  Receiver& receiver, size_t windowSize = USUAL_WINDOW) {
    constexpr size_t LARGEST_PIECE = 128 << 20;  // far below the parser's own limits
    if (!charset.empty() && !equalIgnoringCase(charset, "utf-8")) {
        return false;
    }
    DocumentScanner<Receiver> scanner(receiver);
    std::vector<char> window(windowSize + 1);
    uint64_t offset = 0;
    size_t held = 0;
    for (bool isLast = false; !isLast && !scanner.isUnknown();) {
        if (endMark.isSet()) {
            return false;
        }
        if (held >= LARGEST_PIECE) {
            return false;
        }
        if (held + 1 == window.size()) {  // a single piece fills it
            window.resize(2 * held + 1);
        }
        const size_t wanted = window.size() - 1 - held;
        const size_t got = source.read(offset, window.data() + held, wanted);
        offset += got;
        held += got;
        isLast = got < wanted;
        window[held] = 0;
        const size_t taken = scanner.scan(window.data(), held, isLast);
        held -= taken;
        std::memmove(window.data(), window.data() + taken, held);
    }
    return scanner.isComplete();
}

}  // namespace intake
