#include "workbench/cli/run/FileMark.h"

namespace workbench {

// Editors that write a new file in the place of the old one change its time.
std::uint64_t fileIdentity(const std::string&) {
    return 0;
}

}  // namespace workbench
