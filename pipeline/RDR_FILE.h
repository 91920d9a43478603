#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/Diagnostics.h"
#include "platform/Files.h"

namespace intake {

/// Reads a whole local file into memory in one piece. Worker thread.
class RDR_FILE {
public:
    RDR_FILE(Files& files, Diagnostics& diagnostics) : files_(files), diagnostics_(diagnostics) {}

    /// On success `buffer` holds the file's bytes and one zero byte behind them, and `size` counts
    /// both. On failure the step that failed is reported to the debugger's output; after a failed
    /// size query or read the file stays open, and after a failed read `buffer` is already set.
    bool Read(const std::string& path, std::unique_ptr<char[]>& buffer, size_t& size);

private:
    bool fail(const char* step);

    Files& files_;
    Diagnostics& diagnostics_;
};

}  // namespace intake
