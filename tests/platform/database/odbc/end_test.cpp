// What becomes of a connection when nobody waits for its worker any more.

#include <thread>

#include "tests/platform/database/odbc/OdbcSqliteTest.h"

namespace intake {

namespace {

constexpr const char* ENDLESS =
    "WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers) "
    "SELECT count(*) FROM numbers";

constexpr uint32_t GIVEN_UP = 0x80004004;

using OdbcEnd = OdbcSqliteTest;

TEST_F(OdbcEnd, AQueryThatNeverEndsIsGivenUp) {
    std::thread host([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        endMark_.set();
    });

    const PlatformError error = errorOf([&] { connection_->openRecordset(ENDLESS); });
    host.join();

    EXPECT_EQ(error.code(), GIVEN_UP);
    EXPECT_EQ(error.description(), "The load was given up.");
}

TEST_F(OdbcEnd, AQueryIsGivenUpAlsoWhenTheMarkWasSetBefore) {
    endMark_.set();

    EXPECT_EQ(errorOf([&] { connection_->openRecordset(ENDLESS); }).code(), GIVEN_UP);
}

TEST_F(OdbcEnd, RecordsAreNotFetchedToTheEnd) {
    const auto records = connection_->openRecordset("SELECT 1 UNION ALL SELECT 2");
    endMark_.set();

    EXPECT_EQ(errorOf([&] { records->moveNext(); }).code(), GIVEN_UP);
}

}  // namespace

}  // namespace intake
