#include "platform/windows/Variant.h"

#include <new>

#include "platform/windows/wide_text.h"

namespace intake {

void Variant::setText(std::string_view utf8) {
    const std::wstring wide = toWide(utf8);
    const BSTR text = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text == nullptr) {
        throw std::bad_alloc();
    }
    VARIANT& value = *out();
    value.vt = VT_BSTR;
    value.bstrVal = text;
}

void Variant::setBool(bool value) {
    VARIANT& target = *out();
    target.vt = VT_BOOL;
    target.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

void Variant::setMissing() {
    VARIANT& target = *out();
    target.vt = VT_ERROR;
    target.scode = DISP_E_PARAMNOTFOUND;
}

VARIANT* Variant::out() {
    VariantClear(&value_);
    return &value_;
}

}  // namespace intake
