#include "formats/workbook/ZipPart.h"

#include <isa-l/crc.h>

#include <algorithm>

#include "formats/workbook/WorkbookFault.h"

namespace intake {

namespace {

constexpr uint16_t STORED = 0;
constexpr uint16_t DEFLATED = 8;

// No sheet that a program wrote comes near: a full one of a million rows stays below.
constexpr uint64_t LARGEST_PART = uint64_t{2} << 30;
constexpr uint64_t HARMLESS_SIZE = 64 << 20;
constexpr uint64_t HIGHEST_RATIO = 250;

[[noreturn]] void throwDamaged() {
    throw WorkbookFault("is damaged");
}

}  // namespace

ZipPart::ZipPart(const ZipArchive& archive, const ZipEntry& entry)
    : archive_(archive),
      entry_(entry),
      position_(archive.dataOffset(entry)),
      packedLeft_(entry.packedSize) {
    if (entry.encrypted) {
        throw WorkbookFault("is encrypted; save the workbook without a password");
    }
    if (entry.method != STORED && entry.method != DEFLATED) {
        throw WorkbookFault("is packed by an unknown method");
    }
    isal_inflate_init(&inflater_);
}

size_t ZipPart::read(char* out, size_t capacity) {
    if (ended_ || capacity == 0) {
        return 0;
    }
    const size_t length =
        entry_.method == STORED ? copyStored(out, capacity) : inflateInto(out, capacity);
    account(out, length);
    if (ended_ && (unpacked_ != entry_.size || checksum_ != entry_.checksum)) {
        throwDamaged();
    }
    return length;
}

size_t ZipPart::copyStored(char* out, size_t capacity) {
    const auto length = static_cast<size_t>(std::min<uint64_t>(capacity, packedLeft_));
    archive_.read(position_, out, length);
    position_ += length;
    packedLeft_ -= length;
    ended_ = packedLeft_ == 0;
    return length;
}

size_t ZipPart::inflateInto(char* out, size_t capacity) {
    const auto room = static_cast<uint32_t>(std::min<size_t>(capacity, UINT32_MAX));
    inflater_.next_out = reinterpret_cast<uint8_t*>(out);
    inflater_.avail_out = room;
    while (inflater_.avail_out > 0 && !ended_) {
        if (inflater_.avail_in == 0) {
            refill();
        }
        const uint32_t before = inflater_.avail_out;
        const bool starved = inflater_.avail_in == 0;
        if (isal_inflate(&inflater_) != ISAL_DECOMP_OK ||
            (starved && inflater_.avail_out == before)) {
            throwDamaged();
        }
        ended_ = inflater_.block_state == ISAL_BLOCK_FINISH;
    }
    return room - inflater_.avail_out;
}

/// Without a byte left it is the inflater that knows whether there is more to unpack.
void ZipPart::refill() {
    const auto length = static_cast<size_t>(std::min<uint64_t>(packed_.size(), packedLeft_));
    archive_.read(position_, packed_.data(), length);
    position_ += length;
    packedLeft_ -= length;
    inflater_.next_in = reinterpret_cast<uint8_t*>(packed_.data());
    inflater_.avail_in = static_cast<uint32_t>(length);
}

void ZipPart::account(const char* bytes, size_t length) {
    unpacked_ += length;
    checksum_ = crc32_gzip_refl(checksum_, reinterpret_cast<const unsigned char*>(bytes), length);
    if (unpacked_ > LARGEST_PART ||
        (unpacked_ > HARMLESS_SIZE && unpacked_ / HIGHEST_RATIO > entry_.packedSize)) {
        throw WorkbookFault("unpacks to far more than a sheet holds");
    }
}

}  // namespace intake
