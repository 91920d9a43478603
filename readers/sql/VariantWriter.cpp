#include "readers/sql/VariantWriter.h"

#include <array>
#include <charconv>

#include "formats/text/six_digits.h"
#include "pipeline/script_text.h"

namespace intake {

namespace {

enum class Form { NOTHING, SIGNED, UNSIGNED, DOUBLE, TEXT, BOOLEAN, TYPE_NUMBER };

struct TypeForm {
    VariantType type = VT_EMPTY;
    Form form = Form::NOTHING;
    int bits = 0;  // of an integer as it is written, which may be wider than as it is stored
};

/// The types that are written; all others write nothing.
constexpr std::array<TypeForm, 19> WRITTEN_TYPES{{
    {VT_I2, Form::SIGNED, 16},       {VT_I1, Form::SIGNED, 32}, {VT_I4, Form::SIGNED, 32},
    {VT_INT, Form::SIGNED, 32},      {VT_I8, Form::SIGNED, 64}, {VT_UI2, Form::UNSIGNED},
    {VT_UI1, Form::UNSIGNED},        {VT_UI4, Form::UNSIGNED},  {VT_UINT, Form::UNSIGNED},
    {VT_UI8, Form::UNSIGNED},        {VT_R4, Form::DOUBLE},     {VT_R8, Form::DOUBLE},
    {VT_DECIMAL, Form::DOUBLE},      {VT_BSTR, Form::TEXT},     {VT_LPSTR, Form::TEXT},
    {VT_LPWSTR, Form::TEXT},         {VT_BOOL, Form::BOOLEAN},  {VT_ERROR, Form::TYPE_NUMBER},
    {VT_UNKNOWN, Form::TYPE_NUMBER},
}};

/// The table above by type number, for it is asked once per value.
constexpr auto FORMS = [] {
    std::array<TypeForm, VT_LPWSTR + 1> forms{};
    for (const TypeForm& row : WRITTEN_TYPES) {
        forms[row.type] = row;
    }
    return forms;
}();

}  // namespace

void VariantWriter::writeInForm(const FieldValue& value) {
    const TypeForm& form = value.type < FORMS.size() ? FORMS[value.type] : FORMS[VT_EMPTY];
    switch (form.form) {
        case Form::NOTHING:
            return;
        case Form::SIGNED:
            return writeSigned(value.integer, form.bits);
        case Form::UNSIGNED:
            return writeUnsigned(value.natural);
        case Form::DOUBLE:
            return value.text.empty() ? appendSixDigits(script_, value.number)
                                      : appendSixDigits(script_, value.text);
        case Form::TEXT:
            script_.append(value.text);
            return;
        case Form::BOOLEAN:
            script_.append(value.integer != 0 ? "1" : "0");
            return;
        case Form::TYPE_NUMBER:
            return writeTypeNumber(value.type);
    }
}

void VariantWriter::writeTypeNumber(VariantType type) {
    script_.append("Got variant type ");
    hexadecimal_ = true;
    writeUnsigned(type);
}

/// Hexadecimal digits show a negative number as its two's complement.
void VariantWriter::writeSigned(int64_t number, int bits) {
    if (hexadecimal_) {
        writeUnsigned(static_cast<uint64_t>(number) & (~uint64_t{0} >> (64 - bits)));
    } else {
        appendInteger(script_, number);
    }
}

void VariantWriter::writeUnsigned(uint64_t number) {
    std::array<char, 20> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, hexadecimal_ ? 16 : 10)
            .ptr;
    script_.append(std::string_view(digits.data(), end));
}

}  // namespace intake
