#pragma once

#include "platform/Files.h"

namespace intake {

/// Paths are in the system's code page.
class WindowsFiles final : public Files {
public:
    Handle open(const char* path) override;
    bool size(Handle file, uint64_t& bytes) override;
    bool read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) override;
    void close(Handle file) override;
};

}  // namespace intake
