#pragma once

#include <gtest/gtest.h>

#include "platform/PlatformError.h"

namespace intake {

/// The error that `operation` throws; fails the test, and returns one of code 0, when it throws
/// none.
template <class Operation>
PlatformError errorOf(Operation operation) {
    try {
        operation();
    } catch (const PlatformError& error) {
        return error;
    }
    ADD_FAILURE() << "no error was thrown";
    return PlatformError(0, "", "", "");
}

}  // namespace intake
