#include "platform/linux/odbc/odbc_errors.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "platform/linux/odbc/odbc_calls.h"

namespace intake {

namespace {

struct Failure {
    uint32_t code;
    const char* meaning;
};

constexpr Failure ABORTED{0x80004004, "Operation aborted"};
constexpr Failure UNSPECIFIED{0x80004005, "Unspecified error"};
constexpr Failure ERRORS_IN_COMMAND{0x80040E14,
                                    "One or more errors occurred during processing of command."};
constexpr Failure NO_TABLE{0x80040E37, "Table does not exist."};
constexpr Failure AUTHENTICATION_FAILED{0x80040E4D, "Authentication failed."};
constexpr Failure NO_COMMAND{0x80040E0C, "A command has not been set for the command object."};
constexpr Failure OBJECT_CLOSED{0x800A0E78, "Operation is not allowed when the object is closed."};

struct StateRow {
    std::string_view state;
    Failure failure;
};

constexpr std::array<StateRow, 3> STATES{{
    {"42000", ERRORS_IN_COMMAND},
    {"42S02", NO_TABLE},
    {"28000", AUTHENTICATION_FAILED},
}};

const Failure& failureOfState(std::string_view state) {
    const auto row = std::find_if(STATES.begin(), STATES.end(),
                                  [&](const StateRow& each) { return each.state == state; });
    return row == STATES.end() ? UNSPECIFIED : row->failure;
}

PlatformError errorOf(const Failure& failure, const std::string& description) {
    return {failure.code, failure.meaning, "ODBC", description};
}

}  // namespace

void throwOdbcFailure(const OdbcHandle& handle, bool narrow) {
    std::vector<Connection::Error> errors;
    Failure failure = UNSPECIFIED;
    OdbcDiagnostic diagnostic;
    for (SQLSMALLINT record = 1; readDiagnostic(handle, record, narrow, diagnostic); ++record) {
        const Failure& each = failureOfState(diagnostic.state);
        failure = errors.empty() ? each : failure;
        errors.push_back({each.code, diagnostic.message});
    }
    if (errors.empty()) {
        throwOdbcError("The ODBC driver failed and does not say why.");
    }
    throw OdbcFailure(errorOf(failure, errors.front().description), errors);
}

void throwOdbcError(const std::string& description) {
    throw errorOf(UNSPECIFIED, description);
}

void throwNoQuery() {
    throw errorOf(NO_COMMAND, "The query is empty.");
}

void throwNoRecords() {
    throw errorOf(OBJECT_CLOSED, "The statement does not return records.");
}

void throwQueryGivenUp() {
    throw errorOf(ABORTED, "The query was given up.");
}

}  // namespace intake
