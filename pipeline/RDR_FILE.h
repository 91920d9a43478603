#pragma once

#include <cstdint>
#include <string>

#include "formats/source/ByteBuffer.h"
#include "platform/Diagnostics.h"
#include "platform/Files.h"

namespace intake {

/// Reads a whole local file into memory in one piece. Worker thread.
class RDR_FILE {
public:
    static constexpr uint64_t MOST_BYTES = uint64_t{1} << 32;

    RDR_FILE(Files& files, Diagnostics& diagnostics) : files_(files), diagnostics_(diagnostics) {}

    /// On success `buffer` holds the file's bytes and one zero byte behind them; its size
    /// counts both. On failure the step that failed is reported to the debugger's output; after a
    /// failed size query or read the file stays open, and after a failed read the buffer's room is
    /// already taken. Throws std::length_error for a file of MOST_BYTES or more.
    bool Read(const std::string& path, ByteBuffer& buffer);

private:
    bool fail(const char* step);

    Files& files_;
    Diagnostics& diagnostics_;
};

}  // namespace intake
