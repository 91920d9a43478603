#include "bench/read_file.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace bench {

std::string readFile(const std::string& path) {
    std::error_code failure;
    const auto bytes = std::filesystem::file_size(path, failure);
    std::ifstream file(path, std::ios::binary);
    if (failure || !file) {
        throw std::runtime_error("Cannot read " + path);
    }
    std::string text(bytes, '\0');
    if (!file.read(text.data(), static_cast<std::streamsize>(bytes))) {
        throw std::runtime_error("Cannot read all of " + path);
    }
    return text;
}

}  // namespace bench
