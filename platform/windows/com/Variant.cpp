#include "platform/windows/com/Variant.h"

#include "platform/windows/com/BasicString.h"

namespace intake {

void Variant::setText(std::string_view utf8) {
    BasicString text(utf8);
    VARIANT& target = *out();
    target.vt = VT_BSTR;
    target.bstrVal = text.release();
}

void Variant::setInteger(long value) {
    VARIANT& target = *out();
    target.vt = VT_I4;
    target.lVal = value;
}

void Variant::setObject(IDispatch* object) {
    VARIANT& target = *out();
    target.vt = VT_DISPATCH;
    target.pdispVal = object;
    object->AddRef();
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
