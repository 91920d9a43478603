#include "platform/linux/base/abandonable_call.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#include "tests/support/eventually.h"

namespace intake {

namespace {

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

TEST(AbandonableCall, ThrowsHereWhatItThrows) {
    const EndMark endMark;
    const auto fail = [] { throw std::runtime_error("no memory"); };

    EXPECT_THROW(makeAbandonableCall(fail, endMark, std::chrono::hours(1)), std::runtime_error);
}

}  // namespace

}  // namespace intake
