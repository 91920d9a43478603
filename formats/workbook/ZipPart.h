#pragma once

#include <isa-l/igzip_lib.h>

#include <array>
#include <cstdint>

#include "formats/source/ByteStream.h"
#include "formats/workbook/ZipArchive.h"

namespace intake {

/// Unpacks one entry of an archive from its start to its end, by ISA-L, which takes less than half
/// of zlib's time for it. Belongs to one thread; the archive and the entry outlive it. Damage, and
/// an entry that would unpack to far too much, throw WorkbookFault.
class ZipPart final : public ByteStream {
public:
    ZipPart(const ZipArchive& archive, const ZipEntry& entry);
    ZipPart(const ZipPart&) = delete;
    ZipPart& operator=(const ZipPart&) = delete;

    /// The end is reached only when size and checksum are right.
    size_t read(char* out, size_t capacity) override;

private:
    size_t copyStored(char* out, size_t capacity);
    size_t inflateInto(char* out, size_t capacity);
    void refill();
    void account(const char* bytes, size_t length);

    const ZipArchive& archive_;
    const ZipEntry& entry_;
    uint64_t position_;    // of the next packed byte in the file
    uint64_t packedLeft_;  // not yet read from the file
    uint64_t unpacked_ = 0;
    uint32_t checksum_ = 0;
    bool ended_ = false;
    inflate_state inflater_;
    std::array<char, 65536> packed_;
};

}  // namespace intake
