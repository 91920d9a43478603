#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/source/ByteSource.h"

namespace intake {

/// One file of a zip archive, as the archive's directory describes it.
struct ZipEntry {
    std::string name;
    uint64_t headerOffset = 0;  // of its local header
    uint64_t packedSize = 0;
    uint64_t size = 0;
    uint32_t checksum = 0;
    uint16_t method = 0;  // 0 stored, 8 deflated
    bool encrypted = false;
};

/// A zip archive, with or without the 64-bit extensions. Belongs to one thread. What is wrong with
/// the archive throws WorkbookFault.
class ZipArchive {
public:
    /// `file` outlives this object.
    explicit ZipArchive(const ByteSource& file);

    /// The entry of that name, without regard to case; null where there is none.
    const ZipEntry* find(std::string_view name) const;

    /// Where the packed bytes of an entry begin in the file.
    uint64_t dataOffset(const ZipEntry& entry) const;

    /// Reads exactly `length` bytes of the file; what is thrown goes on from what was to be read.
    void read(uint64_t offset, char* out, size_t length) const;

private:
    void refuseOtherFiles() const;
    void readDirectory();

    const ByteSource& file_;
    std::vector<ZipEntry> entries_;
};

}  // namespace intake
