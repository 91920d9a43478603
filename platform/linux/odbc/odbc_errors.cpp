#include "platform/linux/odbc/odbc_errors.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/odbc_calls.h"

namespace intake {

namespace {

constexpr ComFailure AUTHENTICATION_FAILED{0x80040E4D, "Authentication failed."};

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
        UNSPECIFIED.raise(ODBC_SOURCE, "The ODBC driver failed and did not say why.");
    }
    throw ConnectionFailure(
        {failure.code, failure.meaning, ODBC_SOURCE, errors.front().description}, errors);
}

}  // namespace intake
