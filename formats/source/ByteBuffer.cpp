#include "formats/source/ByteBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

namespace intake {

ByteBuffer::~ByteBuffer() {
    std::free(data_);
}

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
    return *this;
}

char* ByteBuffer::prepare(size_t bytes) {
    const size_t needed = size_ + bytes;
    if (needed > capacity_) {
        // The first size is taken as it is: a file is read in one piece.
        const size_t capacity = capacity_ == 0 ? needed : std::max(needed, capacity_ * 2);
        void* const grown = std::realloc(data_, capacity);
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        data_ = static_cast<char*>(grown);
        capacity_ = capacity;
    }
    return data_ + size_;
}

}  // namespace intake
