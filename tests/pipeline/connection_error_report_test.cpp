#include "pipeline/error_reports.h"

#include <gtest/gtest.h>

#include "tests/fakes/platform/FakeDatabases.h"

namespace intake {
namespace {

std::string reportOf(std::vector<Connection::Error> errors) {
    FakeDatabases databases;
    databases.errors = std::move(errors);
    const EndMark endMark;
    return connectionErrorReport(*databases.createConnection(endMark), FakeDatabases::failure());
}

TEST(ConnectionErrorReport, HasALineForEachErrorOfTheConnection) {
    EXPECT_EQ(reportOf({{0x80040E4D, "Login failed"}, {0, ""}, {0xABCDEF, "Why: 7"}}),
              "Error number: 0x80040e4d    Login failed\r\r\n"
              "Error number: 0x0    \r\r\n"
              "Error number: 0xabcdef    Why: 7\r\r\n");
}

TEST(ConnectionErrorReport, HasTheFailuresDescriptionWhenTheConnectionSaysNothing) {
    EXPECT_EQ(reportOf({}), "ERROR in Connection Open = The server went away.");
}

}  // namespace
}  // namespace intake
