#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/linux/ProviderConnection.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/error_of.h"

namespace intake {

/// The names of the fields, and the records, as lines; every value with its type: `I4 7|BSTR a|`.
std::string namesOf(Recordset& records);
std::string recordsOf(Recordset& records);

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

    /// The value that a column of a declared type gives for a literal.
    std::string stored(const std::string& type, const std::string& literal);

    /// The errors of the connection: `80004005 text` and a line end each.
    std::string errorLines();

    TempWorkingDirectory directory_;
    EndMark endMark_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace intake
