#include "workbench/cli/environment.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

#include "formats/text/ascii.h"
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

std::optional<std::size_t> columnsFromEnvironment() {
    const char* const value = std::getenv("COLUMNS");
    const std::string_view text = value == nullptr ? "" : value;
    std::size_t columns = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), columns);
    const bool isNumber = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber && columns > 0 ? std::optional(columns) : std::nullopt;
}

bool terminalHasUnicode() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value == nullptr || *value == 0) continue;
        const std::string locale = intake::lowerCase(value);
        return locale.find("utf-8") != std::string::npos ||
               locale.find("utf8") != std::string::npos;
    }
    return false;
}

}  // namespace workbench
