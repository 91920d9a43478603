#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "formats/workbook/ZipArchive.h"

namespace intake {

/// The number that is stored at `bytes`, lowest byte first.
template <std::unsigned_integral Number>
Number littleEndian(const char* bytes) {
    Number number = 0;
    for (size_t i = 0; i < sizeof(Number); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        number = static_cast<Number>(number | static_cast<Number>(byte) << (8 * i));
    }
    return number;
}

/// Reads exactly so many bytes from an offset of the archive, or throws.
using ReadBytes = std::function<void(uint64_t offset, char* out, size_t length)>;

/// The entries of an archive of `fileSize` bytes. Throws WorkbookFault when its directory is
/// missing or damaged.
std::vector<ZipEntry> readZipDirectory(const ReadBytes& read, uint64_t fileSize);

}  // namespace intake
