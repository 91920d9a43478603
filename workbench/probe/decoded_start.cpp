#include "workbench/probe/decoded_start.h"

#include "formats/text/byte_order_mark.h"
#include "formats/text/utf16.h"

namespace probe {

namespace {

enum class ByteOrder { Low, High };  // which byte of a unit comes first

std::string fromUtf16(std::string_view bytes, ByteOrder order) {
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<char16_t>(order == ByteOrder::Low ? first | second << 8
                                                               : first << 8 | second);
    }
    return intake::toUtf8(units);
}

// The two first characters of any document that is meant here are ASCII.
bool alternates(std::string_view bytes, std::size_t zero) {
    return bytes.size() >= 4 && bytes[zero] == 0 && bytes[zero + 2] == 0 && bytes[1 - zero] != 0 &&
           bytes[3 - zero] != 0;
}

}  // namespace

std::string decodedStart(std::string_view start) {
    const intake::ByteOrderMark mark = intake::byteOrderMarkOf(start);
    const std::string_view encoding = mark.encoding == nullptr ? "" : mark.encoding;
    const std::string_view text = start.substr(mark.bytes.size());
    if (encoding == "UTF-16LE") return fromUtf16(text, ByteOrder::Low);
    if (encoding == "UTF-16BE") return fromUtf16(text, ByteOrder::High);
    if (encoding.empty() && alternates(text, 1)) return fromUtf16(text, ByteOrder::Low);
    if (encoding.empty() && alternates(text, 0)) return fromUtf16(text, ByteOrder::High);
    return std::string(text);
}

}  // namespace probe
