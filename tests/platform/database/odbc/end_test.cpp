// What becomes of a connection when nobody waits for its worker any more.

#include <atomic>
#include <thread>

#include "platform/linux/odbc/abandonable_call.h"
#include "tests/platform/database/odbc/OdbcSqliteTest.h"
#include "tests/support/eventually.h"

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

/// What a call that was given up still has to wait for.
struct Gate {
    std::atomic<bool> open = false;
    std::atomic<bool> passed = false;
};

/// A call that returns when the gate is opened.
std::function<void()> waitAt(const std::shared_ptr<Gate>& gate) {
    return [gate] {
        eventually([&] { return gate->open.load(); });
        gate->passed = true;
    };
}

TEST(AbandonableCall, IsWaitedForUntilItReturns) {
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>();
    gate->open = true;

    EXPECT_EQ(makeAbandonableCall(waitAt(gate), endMark, std::chrono::hours(1)), CallOutcome::DONE);
    EXPECT_TRUE(gate->passed);
    EXPECT_EQ(gate.use_count(), 1);
}

TEST(AbandonableCall, IsLeftToItselfWhenTheMarkIsSet) {
    EndMark endMark;
    endMark.set();
    const auto gate = std::make_shared<Gate>();

    EXPECT_EQ(makeAbandonableCall(waitAt(gate), endMark, std::chrono::hours(1)),
              CallOutcome::ENDED);
    EXPECT_FALSE(gate->passed);
    gate->open = true;
    EXPECT_TRUE(eventually([&] { return gate.use_count() == 1; }));
}

TEST(AbandonableCall, IsLeftToItselfWhenItsTimeIsOver) {
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>();

    EXPECT_EQ(makeAbandonableCall(waitAt(gate), endMark, std::chrono::milliseconds(1)),
              CallOutcome::LATE);
    gate->open = true;
    EXPECT_TRUE(eventually([&] { return gate.use_count() == 1; }));
}

TEST(AbandonableCall, IsTheOnlyOneOfItsThread) {
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>(), second = std::make_shared<Gate>();
    second->open = true;
    makeAbandonableCall(waitAt(gate), endMark, std::chrono::milliseconds(1));

    EXPECT_EQ(makeAbandonableCall(waitAt(second), endMark, std::chrono::milliseconds(1)),
              CallOutcome::BUSY);
    EXPECT_FALSE(second->passed);

    gate->open = true;
    EXPECT_EQ(makeAbandonableCall(waitAt(second), endMark, std::chrono::hours(1)),
              CallOutcome::DONE);
    EXPECT_TRUE(second->passed);
}

TEST(AbandonableCall, OfOneThreadLeavesThoseOfOthersAlone) {
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>(), second = std::make_shared<Gate>();
    second->open = true;
    makeAbandonableCall(waitAt(gate), endMark, std::chrono::milliseconds(1));

    std::thread([&] {
        EXPECT_EQ(makeAbandonableCall(waitAt(second), endMark, std::chrono::hours(1)),
                  CallOutcome::DONE);
    }).join();
    gate->open = true;
}

}  // namespace

}  // namespace intake
