#pragma once

#include <cstdint>
#include <string>

namespace workbench {

/// What changes when a file does.
struct FileMark {
    bool isThere = false;
    std::int64_t time = 0;  // of the last change, in ticks of the file system's clock
    std::uintmax_t size = 0;
    std::uint64_t identity = 0;

    bool operator==(const FileMark&) const = default;
};

/// The mark that a file has now. Asks the disk. Any thread.
FileMark markOf(const std::string& file);

/// A number that two files on a disk do not share at a time; 0 when it is not known.
std::uint64_t fileIdentity(const std::string& file);

}  // namespace workbench
