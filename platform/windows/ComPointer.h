#pragma once

#include <utility>

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
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

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
