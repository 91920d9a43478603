#include "pipeline/RDR_FILE.h"

#include "pipeline/system_error.h"

namespace intake {

bool RDR_FILE::fail(const char* step) {
    reportSystemError(diagnostics_, step);
    return false;
}

bool RDR_FILE::Read(const std::string& path, std::unique_ptr<char[]>& buffer, size_t& size) {
    const Files::Handle file = files_.open(path.c_str());
    if (file == Files::INVALID) {
        return fail("RDR_FILE::Read() failed: ");
    }
    uint64_t fileSize = 0;
    if (!files_.size(file, fileSize)) {
        return fail("RDR_FILE::Read(): GetFileSizeEx(): ");
    }
    buffer = std::make_unique_for_overwrite<char[]>(static_cast<size_t>(fileSize) + 1);
    size_t bytesRead = 0;
    if (!files_.read(file, buffer.get(), static_cast<size_t>(fileSize), bytesRead)) {
        return fail("RDR_FILE::Read(): ReadFile(): ");
    }
    files_.close(file);
    buffer[bytesRead] = 0;
    size = bytesRead + 1;
    return true;
}

}  // namespace intake
