#pragma once

#include <stdexcept>

namespace workbench {

/// The user asked for something that cannot be done as asked; what() says what and how else.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace workbench
