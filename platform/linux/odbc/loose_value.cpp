#include "platform/linux/odbc/loose_value.h"

#include <array>
#include <limits>

#include "formats/text/number_text.h"
#include "platform/linux/base/truth_words.h"

namespace intake {

namespace {

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
    if (const auto natural = parseWhole<uint64_t>(value.text); natural && type == VT_UI8) {
        value.type = VT_UI8;
        value.natural = *natural;
        return true;
    }
    const auto integer = parseWhole<int64_t>(value.text);
    if (!integer) {
        return false;
    }
    value.type = typeWideEnough(type, *integer);
    value.integer = *integer;
    return true;
}

bool readDouble(VariantType type, FieldValue& value) {
    const auto number = parseWhole<double>(value.text);
    if (!number) {
        return false;
    }
    value.type = type;
    value.number = *number;
    value.text = {};
    return true;
}

bool readBoolean(FieldValue& value) {
    if (const auto integer = parseWhole<int64_t>(value.text)) {
        value.integer = *integer != 0;
    } else if (const auto truth = truthOf(value.text)) {
        value.integer = *truth;
    } else {
        return false;
    }
    value.type = VT_BOOL;
    return true;
}

bool readAs(const OdbcType& type, FieldValue& value) {
    switch (type.fetch) {
        case OdbcFetch::BOOLEAN:
            return readBoolean(value);
        case OdbcFetch::DECIMAL:
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
