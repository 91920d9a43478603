#include "formats/workbook/ZipArchive.h"

#include <algorithm>
#include <system_error>

#include "formats/text/ascii.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/foreign_file.h"
#include "formats/workbook/zip_directory.h"

namespace intake {

namespace {

constexpr size_t LOCAL_HEADER_SIZE = 30;
constexpr uint32_t LOCAL_HEADER_SIGNATURE = 0x04034b50;

}  // namespace

ZipArchive::ZipArchive(const ByteSource& file) : file_(file) {
    refuseOtherFiles();
    readDirectory();
}

void ZipArchive::readDirectory() {
    const auto readBytes = [this](uint64_t offset, char* out, size_t length) {
        try {
            read(offset, out, length);
        } catch (const WorkbookFault& fault) {
            throw WorkbookFault(std::string("its zip directory ") + fault.what());
        }
    };
    entries_ = readZipDirectory(readBytes, file_.size());
}

void ZipArchive::refuseOtherFiles() const {
    std::string start(static_cast<size_t>(std::min<uint64_t>(file_.size(), FOREIGN_FILE_START)), 0);
    read(0, start.data(), start.size());
    const char* const reason = foreignFileReason(start);
    if (reason != nullptr) {
        throw WorkbookFault(reason);
    }
}

const ZipEntry* ZipArchive::find(std::string_view name) const {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [name](const ZipEntry& each) {
        return equalIgnoringCase(each.name, name);
    });
    return entry == entries_.end() ? nullptr : &*entry;
}

uint64_t ZipArchive::dataOffset(const ZipEntry& entry) const {
    char header[LOCAL_HEADER_SIZE];
    read(entry.headerOffset, header, sizeof(header));
    if (littleEndian<uint32_t>(header) != LOCAL_HEADER_SIGNATURE) {
        throw WorkbookFault("is damaged");
    }
    return entry.headerOffset + sizeof(header) + littleEndian<uint16_t>(header + 26) +
           littleEndian<uint16_t>(header + 28);
}

void ZipArchive::read(uint64_t offset, char* out, size_t length) const {
    if (offset > file_.size() || length > file_.size() - offset) {
        throw WorkbookFault("is not there; the file may be incomplete");
    }
    try {
        if (file_.read(offset, out, length) < length) {
            throw WorkbookFault("became shorter while it was read");
        }
    } catch (const std::system_error& error) {
        throw WorkbookFault("cannot be read: " + error.code().message());
    }
}

}  // namespace intake
