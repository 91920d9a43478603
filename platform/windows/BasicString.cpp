#include "platform/windows/BasicString.h"

#include <new>

#include "platform/windows/wide_text.h"

namespace intake {

BasicString::BasicString(std::string_view utf8) {
    const std::wstring wide = toWide(utf8);
    text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (text_ == nullptr) {
        throw std::bad_alloc();
    }
}

BSTR* BasicString::out() {
    SysFreeString(text_);
    text_ = nullptr;
    return &text_;
}

}  // namespace intake
