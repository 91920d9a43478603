// What ends a query or a wait: the end mark, and the times.

#include <sqlite3.h>

#include <thread>

#include "platform/linux/sqlite/SqliteError.h"
#include "platform/linux/sqlite/SqliteStatement.h"
#include "tests/platform/database/sqlite/SqliteTest.h"

namespace intake {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* ENDLESS =
    "WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers) "
    "SELECT count(*) FROM numbers";
constexpr const char* ENDLESS_BEHIND_TWO =
    "WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers) "
    "SELECT n FROM numbers WHERE n <= 2";

constexpr uint32_t GIVEN_UP = 0x80004004;

class SqliteLimits : public SqliteTest {
protected:
    /// Sets the end mark soon.
    std::thread hostThatEnds() {
        return std::thread([this] {
            std::this_thread::sleep_for(milliseconds(100));
            endMark_.set();
        });
    }
};

TEST_F(SqliteLimits, AQueryThatNeverEndsIsGivenUp) {
    std::thread host = hostThatEnds();

    const PlatformError error = errorOf([&] { connection_->openRecordset(ENDLESS); });
    host.join();

    EXPECT_EQ(error.code(), GIVEN_UP);
    EXPECT_EQ(error.description(), "The load was given up.");
}

TEST_F(SqliteLimits, AWaitForALockIsGivenUp) {
    run("CREATE TABLE t (v)");
    run("BEGIN EXCLUSIVE");
    std::thread host = hostThatEnds();

    ProviderConnection other(endMark_);
    const PlatformError error =
        errorOf([&] { other.open("Driver=SQLite3;Database=test.db;Timeout=3600000"); });
    host.join();

    EXPECT_EQ(error.code(), GIVEN_UP);
}

TEST_F(SqliteLimits, RecordsAreNotReadToTheEnd) {
    const auto records = connection_->openRecordset("SELECT 1 UNION ALL SELECT 2");
    endMark_.set();

    EXPECT_EQ(errorOf([&] { records->moveNext(); }).code(), GIVEN_UP);
}

TEST_F(SqliteLimits, ALockedDatabaseIsWaitedForAsLongAsItSays) {
    run("CREATE TABLE t (v)");
    run("BEGIN EXCLUSIVE");
    const auto start = steady_clock::now();

    ProviderConnection other(endMark_);
    const PlatformError error =
        errorOf([&] { other.open("Driver=SQLite3;Database=test.db;Timeout=300"); });

    EXPECT_EQ(error.code(), 0x80004005);
    EXPECT_EQ(error.description(), "The database \"test.db\" cannot be opened: database is locked");
    EXPECT_GE(steady_clock::now() - start, milliseconds(300));
}

TEST_F(SqliteLimits, ADatabaseThatIsLockedForAWhileIsRead) {
    run("CREATE TABLE t AS SELECT 7 AS v");
    run("BEGIN EXCLUSIVE");
    std::thread other([&] {
        std::this_thread::sleep_for(milliseconds(100));
        connection_.reset();
    });
    ProviderConnection waiting(endMark_);

    waiting.open("Driver=SQLite3;Database=test.db");
    other.join();

    EXPECT_EQ(recordsOf(*waiting.openRecordset("SELECT v FROM t")), "I8 7|\n");
}

TEST_F(SqliteLimits, TheTimeForARecordDoesNotPassWhileALockIsWaitedFor) {
    run("CREATE TABLE t AS SELECT 7 AS v");
    SqliteSession session("test.db", SQLITE_OPEN_READWRITE,
                          {std::chrono::minutes(1), milliseconds(500)}, endMark_);
    SqliteStatement query(session, "SELECT v FROM t");
    run("BEGIN EXCLUSIVE");
    std::thread other([&] {
        std::this_thread::sleep_for(milliseconds(1200));
        connection_.reset();
    });

    EXPECT_NO_THROW(EXPECT_TRUE(query.step()));
    other.join();
}

TEST_F(SqliteLimits, AWriterThatIsInTheWayIsNamed) {
    run("CREATE TABLE t (v)");
    run("BEGIN IMMEDIATE");
    ProviderConnection other(endMark_);
    other.open("Driver=SQLite3;Database=test.db;Timeout=0");

    const PlatformError error = errorOf([&] { other.openRecordset("INSERT INTO t VALUES (1)"); });

    EXPECT_EQ(error.code(), 0x80004005);
    EXPECT_EQ(error.description(), "database is locked");
}

TEST_F(SqliteLimits, AQueryThatGivesNoRecordInTimeFails) {
    SqliteSession session("test.db", SQLITE_OPEN_READONLY, {milliseconds(0), milliseconds(50)},
                          endMark_);
    SqliteStatement query(session, ENDLESS);
    try {
        query.step();
        FAIL();
    } catch (const SqliteError& error) {
        EXPECT_EQ(error.code(), SQLITE_INTERRUPT);
        EXPECT_STREQ(error.what(), "no record came within 0 seconds");
    }
}

TEST_F(SqliteLimits, TheTimeBeginsAnewWithEachRecord) {
    SqliteSession session("test.db", SQLITE_OPEN_READONLY, {milliseconds(0), milliseconds(200)},
                          endMark_);
    SqliteStatement query(session, ENDLESS_BEHIND_TWO);
    EXPECT_TRUE(query.step());
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_TRUE(query.step());
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_THROW(query.step(), SqliteError);
}

}  // namespace

}  // namespace intake
