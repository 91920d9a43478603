#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace intake::html {

/// Memory for what lives and goes together with a page. Nothing in it is destroyed on its own.
/// Throws std::bad_alloc.
class Arena {
public:
    template <class Type>
    Type* make() {
        static_assert(std::is_trivially_destructible_v<Type>);
        return new (allocate(sizeof(Type), alignof(Type))) Type;
    }

    /// Room for a text of up to `capacity` bytes; what `keep` does not take goes to the next one.
    char* beginText(size_t capacity) {
        reserve(capacity);
        return at_;
    }
    std::string_view keep(size_t bytes) {
        at_ += bytes;
        return {at_ - bytes, bytes};
    }

    /// What it has taken from the system so far, in bytes.
    size_t size() const { return size_; }

private:
    static constexpr size_t BLOCK = size_t{256} * 1024;

    void* allocate(size_t bytes, size_t alignment) {
        reserve(bytes + alignment);
        at_ += (alignment - reinterpret_cast<size_t>(at_) % alignment) % alignment;
        at_ += bytes;
        return at_ - bytes;
    }

    void reserve(size_t bytes) {
        if (static_cast<size_t>(end_ - at_) < bytes) {
            const size_t size = std::max(bytes, BLOCK);
            // Not value-initialised: writing a block twice would show in the parse time.
            blocks_.push_back(std::unique_ptr<char[]>(new char[size]));
            at_ = blocks_.back().get();
            end_ = at_ + size;
            size_ += size;
        }
    }

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* at_ = nullptr;
    char* end_ = nullptr;
    size_t size_ = 0;
};

}  // namespace intake::html
