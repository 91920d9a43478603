#pragma once

#include <cstddef>

namespace intake {

/// A growing block of bytes. Growing a large one moves its pages, not its bytes, so that a source
/// of any size is held about once. Movable; throws std::bad_alloc.
class ByteBuffer {
public:
    ByteBuffer() = default;
    ~ByteBuffer();
    ByteBuffer(ByteBuffer&& other) noexcept;
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;

    char* data() { return data_; }
    const char* data() const { return data_; }
    size_t size() const { return size_; }

    /// Makes room for `bytes` more and returns where they go; `commit` counts those that came.
    char* prepare(size_t bytes);
    void commit(size_t bytes) { size_ += bytes; }

private:
    char* data_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

}  // namespace intake
