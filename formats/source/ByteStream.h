#pragma once

#include <cstddef>

namespace intake {

/// Bytes that are read once, from the first to the last. Belongs to one thread.
class ByteStream {
public:
    virtual ~ByteStream() = default;

    /// The next bytes: as many as fit, fewer at the end, none behind it. Throws what the format
    /// throws that they are unpacked from.
    virtual size_t read(char* out, size_t capacity) = 0;
};

}  // namespace intake
