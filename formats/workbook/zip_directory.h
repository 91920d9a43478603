#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "formats/workbook/ZipArchive.h"

namespace intake {

/// Reads exactly so many bytes from an offset of the archive, or throws.
using ReadBytes = std::function<void(uint64_t offset, char* out, size_t length)>;

/// The entries of an archive of `fileSize` bytes. Throws WorkbookFault when its directory is
/// missing or damaged.
std::vector<ZipEntry> readZipDirectory(const ReadBytes& read, uint64_t fileSize);

}  // namespace intake
