#include "pipeline/RDR_FILE.h"

#include <stdexcept>

#include "pipeline/messages.h"

namespace intake {

bool RDR_FILE::fail(const char* step) {
    reportSystemError(diagnostics_, step);
    return false;
}

bool RDR_FILE::Read(const std::string& path, ByteBuffer& buffer) {
    const Files::Handle file = files_.open(path.c_str());
    if (file == Files::INVALID) {
        return fail("RDR_FILE::Read() failed: ");
    }
    uint64_t fileSize = 0;
    if (!files_.size(file, fileSize)) {
        return fail("RDR_FILE::Read(): GetFileSizeEx(): ");
    }
    if (fileSize >= MOST_BYTES) {
        files_.close(file);
        throw std::length_error("The file has 4 GiB or more.");
    }
    const auto capacity = static_cast<size_t>(fileSize);
    buffer = ByteBuffer();
    char* bytes = nullptr;
    try {
        bytes = buffer.prepare(capacity + 1);
    } catch (...) {
        files_.close(file);
        throw;
    }
    size_t bytesRead = 0;
    if (!files_.read(file, bytes, capacity, bytesRead)) {
        return fail("RDR_FILE::Read(): ReadFile(): ");
    }
    files_.close(file);
    bytes[bytesRead] = 0;
    buffer.commit(bytesRead + 1);
    return true;
}

}  // namespace intake
