#include "platform/linux/odbc/odbc_errors.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/linux/com_failures.h"
#include "platform/linux/odbc/odbc_calls.h"

namespace intake {

namespace {

constexpr const char* SOURCE = "ODBC";

constexpr ComFailure AUTHENTICATION_FAILED{0x80040E4D, "Authentication failed."};
constexpr ComFailure NO_COMMAND{0x80040E0C, "A command has not been set for the command object."};
constexpr ComFailure OBJECT_CLOSED{0x800A0E78,
                                   "Operation is not allowed when the object is closed."};

struct StateRow {
    std::string_view state;
    ComFailure failure;
};

constexpr std::array<StateRow, 3> STATES{{
    {"42000", ERRORS_IN_COMMAND},
    {"42S02", NO_TABLE},
    {"28000", AUTHENTICATION_FAILED},
}};

const ComFailure& failureOfState(std::string_view state) {
    const auto row = std::find_if(STATES.begin(), STATES.end(),
                                  [&](const StateRow& each) { return each.state == state; });
    return row == STATES.end() ? UNSPECIFIED : row->failure;
}

}  // namespace

void throwOdbcFailure(const OdbcHandle& handle, bool narrow) {
    std::vector<Connection::Error> errors;
    ComFailure failure = UNSPECIFIED;
    OdbcDiagnostic diagnostic;
    for (SQLSMALLINT record = 1; readDiagnostic(handle, record, narrow, diagnostic); ++record) {
        const ComFailure& each = failureOfState(diagnostic.state);
        failure = errors.empty() ? each : failure;
        errors.push_back({each.code, diagnostic.message});
    }
    if (errors.empty()) {
        throwOdbcError("The ODBC driver failed and did not say why.");
    }
    throw OdbcFailure({failure.code, failure.meaning, SOURCE, errors.front().description}, errors);
}

void throwOdbcError(const std::string& description) {
    UNSPECIFIED.raise(SOURCE, description);
}

void throwNoQuery() {
    NO_COMMAND.raise(SOURCE, "The query is empty.");
}

void throwNoRecords() {
    OBJECT_CLOSED.raise(SOURCE, "The statement does not return records.");
}

void throwQueryGivenUp() {
    ABORTED.raise(SOURCE, "The query was given up.");
}

}  // namespace intake
