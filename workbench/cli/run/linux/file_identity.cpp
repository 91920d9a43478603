#include <sys/stat.h>

#include "workbench/cli/run/FileMark.h"

namespace workbench {

std::uint64_t fileIdentity(const std::string& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? status.st_ino : 0;
}

}  // namespace workbench
