#pragma once

#include "platform/windows/com.h"

#include <string_view>

namespace intake {

/// A text as OLE automation takes it (BSTR), freed with its owner.
class BasicString {
public:
    BasicString() = default;

    /// Throws std::bad_alloc.
    explicit BasicString(std::string_view utf8);

    ~BasicString() { SysFreeString(text_); }
    BasicString(const BasicString&) = delete;
    BasicString& operator=(const BasicString&) = delete;

    BSTR get() const { return text_; }
    std::wstring_view view() const {
        return text_ == nullptr ? std::wstring_view() : std::wstring_view(text_, size());
    }

    /// Where a call puts a text; what was held is freed.
    BSTR* out();

private:
    size_t size() const { return SysStringLen(text_); }

    BSTR text_ = nullptr;
};

}  // namespace intake
