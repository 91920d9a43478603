#include "formats/workbook/zip_directory.h"

#include <algorithm>
#include <optional>

#include "formats/workbook/WorkbookFault.h"

namespace intake {

namespace {

constexpr uint32_t END_SIGNATURE = 0x06054b50;
constexpr uint32_t END64_SIGNATURE = 0x06064b50;
constexpr uint32_t LOCATOR64_SIGNATURE = 0x07064b50;
constexpr uint32_t ENTRY_SIGNATURE = 0x02014b50;
constexpr size_t END_SIZE = 22;
constexpr size_t END64_SIZE = 56;
constexpr size_t LOCATOR64_SIZE = 20;
constexpr size_t ENTRY_SIZE = 46;
constexpr size_t LONGEST_COMMENT = 0xFFFF;
constexpr uint64_t LARGEST_DIRECTORY = 64 << 20;
constexpr uint32_t IN_EXTENSION = 0xFFFFFFFF;  // a number that stands in the 64-bit extension

struct Directory {
    uint64_t offset;
    uint64_t size;
};

[[noreturn]] void throwDamaged() {
    throw WorkbookFault("its zip directory is damaged; the file may be incomplete");
}

/// The end record's place in the file's last bytes: the last one whose comment fills the rest,
/// else, where something follows the archive, the last one whose comment is whole.
size_t findEnd(const std::vector<char>& tail) {
    std::optional<size_t> found;
    for (size_t at = tail.size() - END_SIZE + 1; at-- > 0;) {
        if (littleEndian<uint32_t>(&tail[at]) != END_SIGNATURE) {
            continue;
        }
        const size_t end = at + END_SIZE + littleEndian<uint16_t>(&tail[at + 20]);
        if (end == tail.size()) {
            return at;
        }
        found = !found && end < tail.size() ? at : found;
    }
    if (!found) {
        throw WorkbookFault("it has no zip directory; the file may be incomplete");
    }
    return *found;
}

Directory readEnd64(const ReadBytes& read, uint64_t endOffset) {
    if (endOffset < LOCATOR64_SIZE) {
        throwDamaged();
    }
    char locator[LOCATOR64_SIZE];
    read(endOffset - LOCATOR64_SIZE, locator, sizeof(locator));
    if (littleEndian<uint32_t>(locator) != LOCATOR64_SIGNATURE) {
        throwDamaged();
    }
    char end[END64_SIZE];
    read(littleEndian<uint64_t>(locator + 8), end, sizeof(end));
    if (littleEndian<uint32_t>(end) != END64_SIGNATURE) {
        throwDamaged();
    }
    return {littleEndian<uint64_t>(end + 48), littleEndian<uint64_t>(end + 40)};
}

Directory findDirectory(const ReadBytes& read, uint64_t fileSize) {
    if (fileSize < END_SIZE) {
        throwDamaged();
    }
    std::vector<char> tail(
        static_cast<size_t>(std::min<uint64_t>(fileSize, END_SIZE + LONGEST_COMMENT)));
    const uint64_t tailOffset = fileSize - tail.size();
    read(tailOffset, tail.data(), tail.size());
    const size_t end = findEnd(tail);
    const auto size = littleEndian<uint32_t>(&tail[end + 12]);
    const auto offset = littleEndian<uint32_t>(&tail[end + 16]);
    if (offset == IN_EXTENSION || size == IN_EXTENSION) {
        return readEnd64(read, tailOffset + end);
    }
    return {offset, size};
}

/// Replaces the numbers that did not fit by those of the 64-bit extension, which holds them in
/// order.
void readExtension64(const char* extra, size_t length, ZipEntry& entry) {
    while (length >= 4) {
        const auto id = littleEndian<uint16_t>(extra);
        size_t size = littleEndian<uint16_t>(extra + 2);
        extra += 4;
        length -= 4;
        if (size > length) {
            throwDamaged();
        }
        if (id == 1) {
            for (uint64_t* number : {&entry.size, &entry.packedSize, &entry.headerOffset}) {
                if (*number == IN_EXTENSION && size >= 8) {
                    *number = littleEndian<uint64_t>(extra);
                    extra += 8;
                    size -= 8;
                }
            }
            return;
        }
        extra += size;
        length -= size;
    }
}

/// Takes the entry at `at`, and returns the place behind it.
size_t takeEntry(const std::vector<char>& directory, size_t at, ZipEntry& entry) {
    const char* const bytes = &directory[at];
    if (littleEndian<uint32_t>(bytes) != ENTRY_SIGNATURE) {
        throwDamaged();
    }
    const size_t nameLength = littleEndian<uint16_t>(bytes + 28);
    const size_t extraLength = littleEndian<uint16_t>(bytes + 30);
    const size_t end =
        at + ENTRY_SIZE + nameLength + extraLength + littleEndian<uint16_t>(bytes + 32);
    if (end > directory.size()) {
        throwDamaged();
    }
    entry.encrypted = (littleEndian<uint16_t>(bytes + 8) & 1) != 0;
    entry.method = littleEndian<uint16_t>(bytes + 10);
    entry.checksum = littleEndian<uint32_t>(bytes + 16);
    entry.packedSize = littleEndian<uint32_t>(bytes + 20);
    entry.size = littleEndian<uint32_t>(bytes + 24);
    entry.headerOffset = littleEndian<uint32_t>(bytes + 42);
    entry.name.assign(bytes + ENTRY_SIZE, nameLength);
    std::replace(entry.name.begin(), entry.name.end(), '\\', '/');
    readExtension64(bytes + ENTRY_SIZE + nameLength, extraLength, entry);
    return end;
}

}  // namespace

std::vector<ZipEntry> readZipDirectory(const ReadBytes& read, uint64_t fileSize) {
    const Directory place = findDirectory(read, fileSize);
    if (place.offset > fileSize || place.size > fileSize - place.offset ||
        place.size > LARGEST_DIRECTORY) {
        throwDamaged();
    }
    std::vector<char> directory(static_cast<size_t>(place.size));
    read(place.offset, directory.data(), directory.size());
    std::vector<ZipEntry> entries;
    for (size_t at = 0; at + ENTRY_SIZE <= directory.size();) {
        at = takeEntry(directory, at, entries.emplace_back());
    }
    return entries;
}

}  // namespace intake
