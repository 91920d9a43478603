#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/PlatformError.h"
#include "platform/linux/ProviderConnection.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// The names of the fields, and the records, as lines; every value with its type: `I4 7|BSTR a|`.
std::string namesOf(Recordset& records);
std::string recordsOf(Recordset& records);

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

/// A connection of our own to a database that the test chooses.
class DatabaseTest : public testing::Test {
protected:
    static constexpr uint32_t NO_RECORDS = 0x800A0E78;

    /// A new connection.
    void open(const std::string& connectionString);

    /// Runs statements that return no records.
    void run(const std::string& statement);

    std::string recordsOfQuery(const std::string& query);
    std::string namesOfQuery(const std::string& query);

    /// The errors of the connection: `80004005 text` and a line end each.
    std::string errorLines();

    TempWorkingDirectory directory_;
    EndMark endMark_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace intake
