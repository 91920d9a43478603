#pragma once

#include "platform/windows/com/com.h"

#include <string_view>

namespace intake {

/// A text as OLE automation takes it (BSTR), freed with its owner.
class BasicString {
public:
    BasicString() = default;

    /// Each throws PlatformError with E_OUTOFMEMORY.
    explicit BasicString(std::string_view utf8);
    explicit BasicString(std::wstring_view text);

    ~BasicString() { SysFreeString(text_); }
    BasicString(const BasicString&) = delete;
    BasicString& operator=(const BasicString&) = delete;

    BSTR get() const { return text_; }
    std::wstring_view view() const {
        return text_ == nullptr ? std::wstring_view() : std::wstring_view(text_, size());
    }

    /// Where a call puts a text; what was held is freed.
    BSTR* out();

    /// Hands the text over to the caller.
    BSTR release();

private:
    size_t size() const { return SysStringLen(text_); }

    BSTR text_ = nullptr;
};

}  // namespace intake
