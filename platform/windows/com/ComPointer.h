#pragma once

#include <utility>

#include "platform/windows/com/com.h"
#include "platform/windows/com/com_error.h"

namespace intake {

/// A reference to a COM object, released with its owner. Null where there is none.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;

    /// Takes over a reference that is counted already.
    explicit ComPointer(Interface* counted) : object_(counted) {}

    ~ComPointer() { reset(); }
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;

    Interface* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Throws PlatformError with E_POINTER where there is no object.
    Interface* operator->() const {
        if (object_ == nullptr) {
            throwCom(E_POINTER);
        }
        return object_;
    }

    /// Another interface of the object. Throws PlatformError where it has none such.
    template <class Other>
    ComPointer<Other> as(REFIID identity) const {
        ComPointer<Other> other;
        checkCom((*this)->QueryInterface(identity, other.outAny()));
        return other;
    }

    /// Where a call puts a counted reference; what was held is released.
    Interface** out() {
        reset();
        return &object_;
    }
    void** outAny() { return reinterpret_cast<void**>(out()); }

    void reset() {
        if (Interface* const object = std::exchange(object_, nullptr)) {
            object->Release();
        }
    }

private:
    Interface* object_ = nullptr;
};

}  // namespace intake
