#pragma once

#include <stdexcept>

namespace probe {

/// A source could not be looked at; what() says why, as the end of a sentence about it.
class LookFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace probe
