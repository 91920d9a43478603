#pragma once

#include <string>

#include "formats/source/ByteSource.h"
#include "platform/linux/base/Descriptor.h"

namespace intake {

/// Opens a regular file for reading; anything else, such as a pipe that nobody writes to, could
/// hold the caller. Where none is open, the reason is in errno: EISDIR for a folder, ENOTSUP for
/// what is neither file nor folder.
Descriptor openRegularFile(const char* path);

/// Reads up to `length` bytes at a place; fewer only at the end. Negative when that fails, with the
/// reason in errno.
int64_t readFully(int file, uint64_t offset, char* out, size_t length);

/// A regular file, open for as long as this object lives. Belongs to one thread.
class RegularFile final : public ByteSource {
public:
    /// Throws std::system_error.
    explicit RegularFile(const std::string& path);

    uint64_t size() const override { return size_; }
    size_t read(uint64_t offset, char* out, size_t length) const override;

private:
    Descriptor file_;
    uint64_t size_ = 0;
};

}  // namespace intake
