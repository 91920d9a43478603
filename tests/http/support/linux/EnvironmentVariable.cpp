#include "tests/http/support/EnvironmentVariable.h"

#include <cstdlib>

namespace intake {

EnvironmentVariable::EnvironmentVariable(const char* name, const std::optional<std::string>& value)
    : name_(name) {
    if (const char* const before = std::getenv(name)) {
        before_ = before;
    }
    set(value);
}

void EnvironmentVariable::set(const std::optional<std::string>& value) const {
    if (value) {
        setenv(name_, value->c_str(), 1);
    } else {
        unsetenv(name_);
    }
}

}  // namespace intake
