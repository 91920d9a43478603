#include "platform/linux/workbook/ZipArchive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/equal_ignoring_case.h"
#include "platform/linux/workbook/foreign_file.h"
#include "platform/linux/workbook/little_endian.h"
#include "platform/linux/workbook/workbook_errors.h"
#include "platform/linux/workbook/zip_directory.h"

namespace intake {

namespace {

constexpr size_t LOCAL_HEADER_SIZE = 30;
constexpr uint32_t LOCAL_HEADER_SIGNATURE = 0x04034b50;

std::string errorText(int number) {
    return std::generic_category().message(number);
}

/// Opens a regular file. A pipe that nobody writes to must not hold the worker.
int openFile(const std::string& path, uint64_t& size) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        throw WorkbookFault(errorText(errno));
    }
    struct stat status {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(file);
        throw WorkbookFault(S_ISDIR(status.st_mode) ? errorText(EISDIR)
                                                    : "it is not a regular file");
    }
    size = static_cast<uint64_t>(status.st_size);
    return file;
}

}  // namespace

ZipArchive::ZipArchive(const std::string& path) : file_(openFile(path, fileSize_)) {
    try {
        refuseOtherFiles();
        readDirectory();
    } catch (...) {
        ::close(file_);
        throw;
    }
}

void ZipArchive::readDirectory() {
    const auto readBytes = [this](uint64_t offset, char* out, size_t length) {
        try {
            read(offset, out, length);
        } catch (const WorkbookFault& fault) {
            throw WorkbookFault(std::string("its zip directory ") + fault.what());
        }
    };
    entries_ = readZipDirectory(readBytes, fileSize_);
}

ZipArchive::~ZipArchive() {
    ::close(file_);
}

void ZipArchive::refuseOtherFiles() const {
    std::string start(static_cast<size_t>(std::min<uint64_t>(fileSize_, FOREIGN_FILE_START)), 0);
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
    if (offset > fileSize_ || length > fileSize_ - offset) {
        throw WorkbookFault("is not there; the file may be incomplete");
    }
    while (length > 0) {
        const ssize_t got = ::pread(file_, out, length, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            throw WorkbookFault(got < 0 ? "cannot be read: " + errorText(errno)
                                        : "became shorter while it was read");
        }
        out += got;
        offset += static_cast<uint64_t>(got);
        length -= static_cast<size_t>(got);
    }
}

}  // namespace intake
