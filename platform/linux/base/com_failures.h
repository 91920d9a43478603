#pragma once

#include <cstdint>
#include <string>

#include "formats/source/EndMark.h"
#include "platform/PlatformError.h"

namespace intake {

/// A kind of failure as COM numbers and names it.
struct ComFailure {
    uint32_t code;
    const char* meaning;

    /// Throws it as the failure of `source`, the component.
    [[noreturn]] void raise(const char* source, const std::string& description) const {
        throw PlatformError(code, meaning, source, description);
    }
};

// Those that more than one adapter reports.
constexpr ComFailure ABORTED{0x80004004, "Operation aborted"};
constexpr ComFailure UNSPECIFIED{0x80004005, "Unspecified error"};
constexpr ComFailure INVALID_ARGUMENT{0x80070057, "The parameter is incorrect."};
constexpr ComFailure NO_COMMAND{0x80040E0C, "A command has not been set for the command object."};
constexpr ComFailure ERRORS_IN_COMMAND{0x80040E14,
                                       "One or more errors occurred during processing of command."};
constexpr ComFailure NO_TABLE{0x80040E37, "Table does not exist."};
constexpr ComFailure BAD_CONNECTION_STRING{
    0x80040E73, "The initialization string does not conform to its format."};
constexpr ComFailure OBJECT_CLOSED{0x800A0E78,
                                   "Operation is not allowed when the object is closed."};

/// Throws the failure of a load that nobody waits for any more, found out by `source`.
[[noreturn]] inline void raiseGivenUp(const char* source) {
    ABORTED.raise(source, GivenUp().what());
}

inline void raiseIfEnded(const EndMark& endMark, const char* source) {
    if (endMark.isSet()) {
        raiseGivenUp(source);
    }
}

}  // namespace intake
