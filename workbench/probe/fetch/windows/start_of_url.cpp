#include "workbench/probe/LookFailure.h"
#include "workbench/probe/fetch/source_start.h"

namespace probe {

std::string startOfUrl(const std::string&, const Request&) {
    throw LookFailure(
        "is an address, which is not looked at on Windows; say what it is, for example with "
        "--set queryMode=JSON");
}

}  // namespace probe
