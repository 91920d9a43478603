#include "platform/windows/ado/variant_value.h"

#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/com_error.h"

namespace intake {

namespace {

double toDouble(DECIMAL decimal) {
    double number = 0;
    checkCom(VarR8FromDec(&decimal, &number));
    return number;
}

std::wstring_view wideText(const VARIANT& variant) {
    if (variant.bstrVal == nullptr) {
        return {};
    }
    // Only a BSTR says how long it is.
    return variant.vt == VT_BSTR ? std::wstring_view(variant.bstrVal, SysStringLen(variant.bstrVal))
                                 : std::wstring_view(variant.bstrVal);
}

void readText(const VARIANT& variant, std::string& text) {
    text.clear();
    if (variant.vt != VT_LPSTR) {
        appendNarrow(wideText(variant), CP_UTF8, text);
    } else if (variant.pcVal != nullptr) {
        appendNarrow(toWide(variant.pcVal, CP_ACP), CP_UTF8, text);
    }
}

}  // namespace

void readVariant(const VARIANT& variant, std::string& text, FieldValue& value) {
    value = FieldValue();
    value.type = static_cast<VariantType>(variant.vt);
    switch (variant.vt) {
        case VT_I1:
            value.integer = static_cast<signed char>(variant.cVal);
            break;
        case VT_I2:
            value.integer = variant.iVal;
            break;
        case VT_I4:
            value.integer = variant.lVal;
            break;
        case VT_INT:
            value.integer = variant.intVal;
            break;
        case VT_I8:
            value.integer = variant.llVal;
            break;
        case VT_BOOL:
            value.integer = variant.boolVal != VARIANT_FALSE;
            break;
        case VT_UI1:
            value.natural = variant.bVal;
            break;
        case VT_UI2:
            value.natural = variant.uiVal;
            break;
        case VT_UI4:
            value.natural = variant.ulVal;
            break;
        case VT_UINT:
            value.natural = variant.uintVal;
            break;
        case VT_UI8:
            value.natural = variant.ullVal;
            break;
        case VT_R4:
            value.number = static_cast<double>(variant.fltVal);
            break;
        case VT_R8:
            value.number = variant.dblVal;
            break;
        case VT_DECIMAL:
            value.number = toDouble(variant.decVal);
            break;
        case VT_BSTR:
        case VT_LPSTR:
        case VT_LPWSTR:
            readText(variant, text);
            value.text = text;
            break;
        default:
            break;
    }
}

}  // namespace intake
