#include "platform/linux/html/page_encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include "platform/linux/html/characters.h"
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

/// Labels that browsers take for another encoding than iconv does, which knows most others. Pages
/// that name the standard were written with the vendor's extension of it.
constexpr std::array<Row, 38> LABELS{{
    {"utf-8", UTF_8},
    {"utf8", UTF_8},
    {"unicode-1-1-utf-8", UTF_8},
    {"x-unicode20utf8", UTF_8},
    {"ansi_x3.4-1968", WINDOWS_1252},
    {"ascii", WINDOWS_1252},
    {"us-ascii", WINDOWS_1252},
    {"iso-8859-1", WINDOWS_1252},
    {"iso8859-1", WINDOWS_1252},
    {"iso_8859-1", WINDOWS_1252},
    {"latin1", WINDOWS_1252},
    {"l1", WINDOWS_1252},
    {"cp1252", WINDOWS_1252},
    {"windows-1252", WINDOWS_1252},
    {"x-cp1252", WINDOWS_1252},
    {"iso-8859-9", "CP1254"},
    {"latin5", "CP1254"},
    {"iso-8859-11", "CP874"},
    {"tis-620", "CP874"},
    {"windows-874", "CP874"},
    {"shift_jis", "CP932"},
    {"shift-jis", "CP932"},
    {"sjis", "CP932"},
    {"x-sjis", "CP932"},
    {"ms932", "CP932"},
    {"ms_kanji", "CP932"},
    {"windows-31j", "CP932"},
    {"x-euc-jp", "EUC-JP"},
    {"euc-kr", "CP949"},
    {"ks_c_5601-1987", "CP949"},
    {"windows-949", "CP949"},
    {"gb2312", "GB18030"},
    {"gbk", "GB18030"},
    {"x-gbk", "GB18030"},
    {"big5", "BIG5-HKSCS"},
    {"x-x-big5", "BIG5-HKSCS"},
    {"utf-16", "UTF-16LE"},
    {"x-mac-roman", "MACINTOSH"},
}};

constexpr std::string_view LABEL_LETTERS = "abcdefghijklmnopqrstuvwxyz0123456789-_.:";

class Converter {
public:
    explicit Converter(const std::string& encoding)
        : converter_(iconv_open("UTF-8", encoding.c_str())) {}
    ~Converter() {
        if (isKnown()) {
            iconv_close(converter_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isKnown() const {
        return converter_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
    }

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

/// The name of a label's encoding; none when it is not known.
std::optional<std::string> encodingOf(std::string_view label) {
    label.remove_prefix(std::min(label.find_first_not_of(WHITE_SPACE), label.size()));
    label = label.substr(0, label.find_last_not_of(WHITE_SPACE) + 1);
    std::string lower(label);
    std::transform(lower.begin(), lower.end(), lower.begin(), toLower);
    const auto row = std::find_if(LABELS.begin(), LABELS.end(),
                                  [&](const Row& each) { return each.label == lower; });
    if (row != LABELS.end()) {
        return std::string(row->name);
    }
    if (lower.empty() || lower.find_first_not_of(LABEL_LETTERS) != std::string::npos ||
        !Converter(lower).isKnown()) {
        return std::nullopt;
    }
    return lower;
}

/// A meta element that can be read does not stand in UTF-16.
std::optional<std::string> declaredEncoding(std::string_view page) {
    auto encoding = encodingOf(encodingOfMeta(page));
    if (encoding && (encoding->starts_with("UTF-16") || encoding->starts_with("utf-16"))) {
        encoding = UTF_8;
    }
    return encoding;
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
    auto encoding = encodingOf(charset);
    encoding = encoding ? encoding : declaredEncoding(bytes);
    if (!encoding) {
        encoding = isValidUtf8(bytes) ? UTF_8 : WINDOWS_1252;
    }
    return convert(std::move(bytes), *encoding);
}

}  // namespace intake::html
