#pragma once

#include "platform/windows/com/com.h"

#include <string_view>

namespace intake {

/// A value of OLE automation (VARIANT), cleared with its owner. Empty at first.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    ~Variant() { VariantClear(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    /// Each replaces what was held. Throws PlatformError with E_OUTOFMEMORY.
    void setText(std::string_view utf8);
    void setInteger(long value);
    /// Shares the object.
    void setObject(IDispatch* object);
    void setBool(bool value);
    /// An argument that is left out.
    void setMissing();

    /// Lent; for calls that take a value and do not keep it.
    const VARIANT& get() const { return value_; }

    /// Where a call puts a value; what was held is cleared.
    VARIANT* out();

private:
    VARIANT value_;
};

}  // namespace intake
