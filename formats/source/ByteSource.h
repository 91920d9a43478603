#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace intake {

/// Bytes that can be read at any place, such as those of a file. Belongs to one thread.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    virtual uint64_t size() const = 0;

    /// Reads up to `length` bytes from `offset` on; fewer only at the end. Throws
    /// std::system_error.
    virtual size_t read(uint64_t offset, char* out, size_t length) const = 0;
};

/// A text in memory, which outlives this object.
class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view text) : text_(text) {}

    uint64_t size() const override { return text_.size(); }
    size_t read(uint64_t offset, char* out, size_t length) const override {
        return offset < text_.size() ? text_.copy(out, length, static_cast<size_t>(offset)) : 0;
    }

private:
    std::string_view text_;
};

}  // namespace intake
