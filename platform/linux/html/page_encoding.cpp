#include "platform/linux/html/page_encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/linux/html/characters.h"
#include "platform/linux/html/encoding_labels.h"
#include "platform/linux/html/page_errors.h"
#include "platform/linux/html/utf8.h"

namespace intake::html {

namespace {

constexpr std::string_view UTF_8 = "UTF-8";
constexpr std::string_view WINDOWS_1252 = "CP1252";

struct Row {
    std::string_view label, name;
};

constexpr std::array<Row, 3> BYTE_ORDER_MARKS{
    {{"\xEF\xBB\xBF", UTF_8}, {"\xFF\xFE", "UTF-16LE"}, {"\xFE\xFF", "UTF-16BE"}}};

class Converter {
public:
    explicit Converter(const std::string& encoding)
        : converter_(iconv_open("UTF-8", encoding.c_str())) {
        if (converter_ == reinterpret_cast<iconv_t>(-1)) {  // NOLINT(performance-no-int-to-ptr)
            throwPageRefused("The system cannot read the page's encoding, " + encoding);
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
    label.remove_prefix(std::min(label.find_first_not_of(WHITE_SPACE), label.size()));
    label = label.substr(0, label.find_last_not_of(WHITE_SPACE) + 1);
    if (label.find_first_of(WHITE_SPACE) != std::string_view::npos) {
        return {};
    }
    std::string lower(label);
    std::transform(lower.begin(), lower.end(), lower.begin(), toLower);
    return encodingOfLabel(lower);
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
        std::array<char, 4> character;
        const uint32_t number = html::fromWindows1252(static_cast<unsigned char>(byte));
        text.append(character.data(), putUtf8(number, character.data()));
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
    const auto mark = std::find_if(BYTE_ORDER_MARKS.begin(), BYTE_ORDER_MARKS.end(),
                                   [&](const Row& each) { return bytes.starts_with(each.label); });
    if (mark != BYTE_ORDER_MARKS.end()) {
        bytes.erase(0, mark->label.size());
        return convert(std::move(bytes), std::string(mark->name));
    }
    std::string_view encoding = encodingOf(charset);
    encoding = encoding.empty() ? declaredEncoding(bytes) : encoding;
    if (encoding.empty()) {
        encoding = isValidUtf8(bytes) ? UTF_8 : WINDOWS_1252;
    }
    return convert(std::move(bytes), std::string(encoding));
}

}  // namespace intake::html
