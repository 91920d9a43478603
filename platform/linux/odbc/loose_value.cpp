#include "platform/linux/odbc/loose_value.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace intake {

namespace {

/// Reads all of the text as a number.
template <class Number>
bool readNumber(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end;
}

struct WidthRow {
    VariantType type;
    int64_t least;
    int64_t most;
};

template <class Integer>
constexpr WidthRow widthOf(VariantType type) {
    return {type, std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()};
}

constexpr std::array<WidthRow, 7> WIDTHS{{
    widthOf<int8_t>(VT_I1),
    widthOf<int16_t>(VT_I2),
    widthOf<int32_t>(VT_I4),
    widthOf<uint8_t>(VT_UI1),
    widthOf<uint16_t>(VT_UI2),
    widthOf<uint32_t>(VT_UI4),
    {VT_UI8, 0, std::numeric_limits<int64_t>::max()},
}};

/// An integer that is too wide for its column's type must not be cut.
VariantType typeWideEnough(VariantType type, int64_t integer) {
    for (const WidthRow& row : WIDTHS) {
        if (row.type == type && (integer < row.least || integer > row.most)) {
            return VT_I8;
        }
    }
    return type;
}

bool readInteger(VariantType type, FieldValue& value) {
    int64_t integer = 0;
    if (!readNumber(value.text, integer)) {
        return false;
    }
    value.type = typeWideEnough(type, integer);
    value.integer = integer;
    return true;
}

bool readDouble(VariantType type, FieldValue& value) {
    double number = 0;
    if (!readNumber(value.text, number)) {
        return false;
    }
    value.type = type;
    value.number = number;
    return true;
}

struct WordRow {
    std::string_view word;
    bool truth;
};

constexpr std::array<WordRow, 8> WORDS{{
    {"true", true},
    {"t", true},
    {"yes", true},
    {"y", true},
    {"false", false},
    {"f", false},
    {"no", false},
    {"n", false},
}};

bool isSameWord(std::string_view word, std::string_view text) {
    return word.size() == text.size() && strncasecmp(word.data(), text.data(), word.size()) == 0;
}

bool readBoolean(FieldValue& value) {
    int64_t integer = 0;
    if (readNumber(value.text, integer)) {
        value.integer = integer != 0;
    } else {
        const auto word = std::find_if(WORDS.begin(), WORDS.end(), [&](const WordRow& row) {
            return isSameWord(row.word, value.text);
        });
        if (word == WORDS.end()) {
            return false;
        }
        value.integer = word->truth;
    }
    value.type = VT_BOOL;
    return true;
}

bool readAs(const OdbcType& type, FieldValue& value) {
    switch (type.fetch) {
        case OdbcFetch::BOOLEAN:
            return readBoolean(value);
        case OdbcFetch::NUMBER:
            return readDouble(type.variant, value);
        default:
            return readInteger(type.variant, value) || readDouble(VT_R8, value);
    }
}

}  // namespace

void readLooseValue(const OdbcType& type, FieldValue& value) {
    if (!readAs(type, value)) {
        value.type = VT_BSTR;
    }
}

}  // namespace intake
