#include "platform/windows/com/BasicString.h"

#include <utility>

#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/com_error.h"

namespace intake {

BasicString::BasicString(std::string_view utf8) : BasicString(toWide(utf8)) {}

BasicString::BasicString(std::wstring_view text)
    : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) {
        throwCom(E_OUTOFMEMORY);
    }
}

BSTR BasicString::release() {
    return std::exchange(text_, nullptr);
}

BSTR* BasicString::out() {
    SysFreeString(text_);
    text_ = nullptr;
    return &text_;
}

}  // namespace intake
