// The most that a sheet may hold, and a part of a workbook.

#include <gtest/gtest.h>

#include <zlib.h>

#include <cstring>
#include <string>
#include <utility>

#include "formats/workbook/Sheet.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/ZipPart.h"
#include "tests/formats/workbook/ZipWriter.h"

namespace intake {

namespace {

template <class Step>
std::string faultOf(Step step) {
    try {
        step();
    } catch (const WorkbookFault& fault) {
        return fault.what();
    }
    return "";
}

TEST(LargeSheet, MayHoldSoManyCellsAndNoMore) {
    constexpr uint32_t MOST_CELLS = 67'108'864;
    const TextTable noTexts;
    Sheet sheet(noTexts);
    sheet.restart(MOST_CELLS);
    for (uint32_t row = 1; row <= MOST_CELLS / MOST_COLUMNS; ++row) {
        sheet.beginRow(row);
        for (uint32_t column = 0; column < MOST_COLUMNS; ++column) {
            sheet.addNumber(column, CellKind::NUMBER, column);
        }
        sheet.endRow();
    }
    Cell last;
    EXPECT_TRUE(sheet.cell(sheet.rows().size() - 1, MOST_COLUMNS - 1, last));
    EXPECT_EQ(last.number, MOST_COLUMNS - 1);
    sheet.beginRow(MOST_ROWS);
    EXPECT_EQ(faultOf([&] { sheet.addNumber(0, CellKind::NUMBER, 1); }),
              "holds more than 67108864 cells");
}

/// A file of which only the start stays when it is made long; zeros follow.
class LongFile final : public ByteSource {
public:
    explicit LongFile(std::string bytes) : bytes_(std::move(bytes)), size_(bytes_.size()) {}

    void makeLong(size_t start) {
        bytes_.resize(start);
        size_ = uint64_t{1} << 40;
    }

    uint64_t size() const override { return size_; }
    size_t read(uint64_t offset, char* out, size_t length) const override {
        std::memset(out, 0, length);
        if (offset < bytes_.size()) {
            bytes_.copy(out, length, static_cast<size_t>(offset));
        }
        return length;
    }

private:
    std::string bytes_;
    uint64_t size_;
};

/// The checksum of so many zeros, as often as two can double one.
uLong checksumOfZeros(int doublings) {
    const char zero = 0;
    uLong checksum = crc32(0, reinterpret_cast<const Bytef*>(&zero), 1);
    for (int i = 0; i < doublings; ++i) {
        checksum = crc32_combine(checksum, checksum, z_off_t{1} << i);
    }
    return checksum;
}

TEST(LargePart, MayUnpackToTwoGigabytesAndNoMore) {
    ZipWriter zip;
    zip.add("part", "", {.stored = true, .method = 0});
    LongFile file(zip.bytes());
    const ZipArchive archive(file);
    ZipEntry entry = *archive.find("part");
    file.makeLong(archive.dataOffset(entry));
    entry.checksum = static_cast<uint32_t>(checksumOfZeros(31));
    const auto unpack = [&](uint64_t size) {
        entry.size = entry.packedSize = size;
        ZipPart part(archive, entry);
        std::string buffer(1 << 20, 0);
        uint64_t unpacked = 0;
        while (const size_t length = part.read(buffer.data(), buffer.size())) {
            unpacked += length;
        }
        EXPECT_EQ(unpacked, size);
    };
    EXPECT_EQ(faultOf([&] { unpack(uint64_t{2} << 30); }), "");
    EXPECT_EQ(faultOf([&] { unpack((uint64_t{2} << 30) + 1); }),
              "unpacks to far more than a sheet holds");
}

}  // namespace

}  // namespace intake
