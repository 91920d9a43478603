#pragma once

#include <cstddef>
#include <cstdint>

namespace intake {

/// Reading of local files by the system's own steps, so that each can fail by itself. Any thread.
/// A step that fails leaves its reason behind for Diagnostics::lastErrorText.
class Files {
public:
    using Handle = intptr_t;
    static constexpr Handle INVALID = -1;

    virtual ~Files() = default;

    /// Opens an existing regular file for reading, sharing it with all others. INVALID on failure.
    virtual Handle open(const char* path) = 0;

    virtual bool size(Handle file, uint64_t& bytes) = 0;

    /// Reads up to `capacity` bytes from the file's start; fewer when the file ends before.
    virtual bool read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) = 0;

    virtual void close(Handle file) = 0;
};

}  // namespace intake
