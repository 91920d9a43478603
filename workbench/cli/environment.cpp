#include "workbench/cli/environment.h"

#include <cstdlib>

#include "workbench/cli/UsageError.h"

namespace workbench {

std::string settingFromEnvironment(const std::string& setting) {
    const auto equals = setting.find('=');
    if (equals == std::string::npos || equals + 1 == setting.size())
        throw UsageError("--set-env takes NAME=VARIABLE, not \"" + setting + "\".");
    const std::string variable = setting.substr(equals + 1);
    const char* const value = std::getenv(variable.c_str());
    if (value == nullptr)
        throw UsageError("--set-env " + setting + ": there is no environment variable \"" +
                         variable + "\". Give its name, and export it.");
    return setting.substr(0, equals + 1) + value;
}

}  // namespace workbench
