#include "formats/html/page_encoding.h"

#include <iconv.h>

#include <array>
#include <cerrno>

#include "formats/html/PageError.h"
#include "formats/html/characters.h"
#include "formats/text/byte_order_mark.h"
#include "formats/text/trim.h"
#include "formats/text/utf8.h"

namespace intake::html {

namespace {

constexpr std::string_view UTF_8 = "UTF-8";
constexpr std::string_view WINDOWS_1252 = "CP1252";

class Converter {
public:
    explicit Converter(const std::string& encoding)
        : converter_(iconv_open("UTF-8", encoding.c_str())) {
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
                text.append(REPLACEMENT);  // what is no character, or the half of one at the end
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
    iconv_t converter_;
};

/// The name of a label's encoding; empty when it is not known.
std::string_view encodingOf(std::string_view label) {
    label = trimmed(label, WHITE_SPACE);
    if (label.find_first_of(WHITE_SPACE) != std::string_view::npos) {
        return {};
    }
    return encodingOfLabel(lowerCase(label));
}

/// A meta element that can be read does not stand in UTF-16.
std::string_view declaredEncoding(std::string_view page) {
    const std::string_view encoding = encodingOf(encodingOfMeta(page));
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

std::string convert(std::string bytes, const std::string& encoding) {
    if (encoding == UTF_8) {
        return withValidUtf8(std::move(bytes));
    }
    return encoding == WINDOWS_1252 ? fromWindows1252(bytes) : Converter(encoding).convert(bytes);
}

}  // namespace

std::string decodePage(std::string bytes, std::string_view charset) {
    const ByteOrderMark mark = byteOrderMarkOf(bytes);
    if (mark.encoding != nullptr) {
        bytes.erase(0, mark.bytes.size());
        return convert(std::move(bytes), mark.encoding);
    }
    std::string_view encoding = encodingOf(charset);
    encoding = encoding.empty() ? declaredEncoding(bytes) : encoding;
    if (encoding.empty()) {
        encoding = isValidUtf8(bytes) ? UTF_8 : WINDOWS_1252;
    }
    return convert(std::move(bytes), std::string(encoding));
}

}  // namespace intake::html
