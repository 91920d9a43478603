#include "formats/html/page_encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "formats/html/PageError.h"
#include "formats/html/characters.h"
#include "formats/text/byte_order_mark.h"
#include "formats/text/utf16.h"
#include "formats/text/utf8.h"

namespace intake::html {

namespace {

constexpr std::string_view UTF_8 = "UTF-8";
constexpr std::string_view WINDOWS_1252 = "CP1252";

constexpr std::string_view GB18030 = "GB18030";
constexpr std::string_view EURO_SIGN = "\xE2\x82\xAC";

class Converter {
public:
    explicit Converter(const std::string& encoding)
        : isGb18030_(encoding == GB18030), converter_(iconv_open("UTF-8", encoding.c_str())) {
        if (converter_ == reinterpret_cast<iconv_t>(-1)) {  // NOLINT(performance-no-int-to-ptr)
            throw PageError("The system cannot read the page's encoding, " + encoding);
        }
    }
    ~Converter() { iconv_close(converter_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    std::string convert(std::string& bytes) const {
        std::string text;
        std::array<char, 65536> buffer;
        char* in = bytes.data();
        size_t inLeft = bytes.size();
        while (inLeft > 0) {
            char* out = buffer.data();
            size_t outLeft = buffer.size();
            const size_t result = iconv(converter_, &in, &inLeft, &out, &outLeft);
            const int error = errno;
            text.append(buffer.data(), buffer.size() - outLeft);
            if (result == static_cast<size_t>(-1) && error != E2BIG) {
                text.append(replacementOf(*in));
                ++in;
                --inLeft;
            }
        }
        char* out = buffer.data();  // for a character that waits for one to combine with
        size_t outLeft = buffer.size();
        iconv(converter_, nullptr, nullptr, &out, &outLeft);
        text.append(buffer.data(), buffer.size() - outLeft);
        return text;
    }

private:
    /// What stands for a byte that is no character, or the half of one at the end.
    std::string_view replacementOf(char byte) const {
        return isGb18030_ && byte == '\x80' ? EURO_SIGN : REPLACEMENT;  // as in windows-936
    }

    const bool isGb18030_;
    iconv_t converter_;
};

/// A declaration that can be read does not stand in UTF-16.
std::string_view declaredEncoding(std::string_view page) {
    std::string_view encoding = encodingOfMeta(page);
    encoding = encoding.empty() ? encodingOfXmlDeclaration(page) : encoding;
    return encoding.starts_with("UTF-16") ? UTF_8 : encoding;
}

std::string fromWindows1252(const std::string& bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        appendUtf8(html::fromWindows1252(static_cast<unsigned char>(byte)), text);
    }
    return text;
}

/// Surrogates that are half of no pair, and half a unit at the end, become U+FFFD.
std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units(bytes.size() / 2, 0);
    for (size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        units[i] = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return toUtf8(units).append(bytes.size() % 2 == 0 ? "" : REPLACEMENT);
}

/// Encodings of more than one byte for some characters.
constexpr std::array<std::string_view, 6> MULTI_BYTE{GB18030,       "BIG5-HKSCS", "EUC-JP",
                                                     "ISO-2022-JP", "CP932",      "CP949"};

/// What a byte means in an encoding of one byte a character. Browsers take those of the control
/// characters that it leaves undefined for these characters.
std::string characterOf(char byte, const Converter& converter) {
    std::string single(1, byte);
    const std::string character = converter.convert(single);
    const auto number = static_cast<unsigned char>(byte);
    if (character != REPLACEMENT || number < 0x80 || number >= 0xA0) {
        return character;
    }
    std::string control;
    appendUtf8(number, control);
    return control;
}

/// Byte by byte: the system's converter would wait for an accent to combine a letter with.
std::string fromSingleBytes(const std::string& bytes, const Converter& converter) {
    std::array<std::string, 256> characters;
    for (size_t byte = 0; byte < characters.size(); ++byte) {
        characters[byte] = characterOf(static_cast<char>(byte), converter);
    }
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 4);
    for (const char byte : bytes) {
        text.append(characters[static_cast<unsigned char>(byte)]);
    }
    return text;
}

std::string convert(std::string bytes, const std::string& encoding) {
    if (encoding == UTF_8) {
        return withValidUtf8(std::move(bytes));
    }
    if (encoding.starts_with("UTF-16")) {
        return fromUtf16(bytes, encoding.ends_with("BE"));
    }
    if (encoding == WINDOWS_1252) {
        return fromWindows1252(bytes);
    }
    const Converter converter(encoding);
    const bool isMultiByte =
        std::find(MULTI_BYTE.begin(), MULTI_BYTE.end(), encoding) != MULTI_BYTE.end();
    return isMultiByte ? converter.convert(bytes) : fromSingleBytes(bytes, converter);
}

}  // namespace

std::string decodePage(std::string bytes, std::string_view charset) {
    const ByteOrderMark mark = byteOrderMarkOf(bytes);
    if (mark.encoding != nullptr) {
        bytes.erase(0, mark.bytes.size());
        return convert(std::move(bytes), mark.encoding);
    }
    std::string_view encoding = encodingOfLabel(charset);
    encoding = encoding.empty() ? declaredEncoding(bytes) : encoding;
    if (encoding.empty()) {
        encoding = isValidUtf8(bytes) ? UTF_8 : WINDOWS_1252;
    }
    return convert(std::move(bytes), std::string(encoding));
}

}  // namespace intake::html
