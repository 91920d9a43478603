#include "platform/linux/base/AbandonableCalls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>

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

TEST(AbandonableCalls, AreWaitedForUntilTheyReturn) {
    AbandonableCalls calls;
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>();
    gate->open = true;

    EXPECT_EQ(calls.make(waitAt(gate), endMark, std::chrono::hours(1)), CallOutcome::DONE);
    EXPECT_TRUE(gate->passed);
    EXPECT_EQ(gate.use_count(), 1);
}

TEST(AbandonableCalls, AreLeftToThemselvesWhenTheMarkIsSet) {
    AbandonableCalls calls;
    const auto endMark = std::make_shared<EndMark>();
    const auto gate = std::make_shared<Gate>();
    const auto call = [endMark, wait = waitAt(gate)] {
        endMark->set();
        wait();
    };

    EXPECT_EQ(calls.make(call, *endMark, std::chrono::hours(1)), CallOutcome::ENDED);
    EXPECT_FALSE(gate->passed);
    gate->open = true;
    EXPECT_TRUE(eventually([&] { return gate->passed.load(); }));
}

TEST(AbandonableCalls, AreNotMadeWhenTheMarkIsSetBeforehand) {
    AbandonableCalls calls;
    EndMark endMark;
    endMark.set();
    const auto made = std::make_shared<std::atomic<bool>>(false);
    const auto call = [made] { *made = true; };

    EXPECT_EQ(calls.make(call, endMark, std::chrono::hours(1)), CallOutcome::ENDED);
    EXPECT_TRUE(eventually([&] { return made.use_count() == 2; }));  // ours and that of `call`
    EXPECT_FALSE(*made);
}

TEST(AbandonableCalls, AreLeftToThemselvesWhenTheirTimeIsOver) {
    AbandonableCalls calls;
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>();

    EXPECT_EQ(calls.make(waitAt(gate), endMark, std::chrono::milliseconds(1)), CallOutcome::LATE);
    gate->open = true;
    EXPECT_TRUE(eventually([&] { return gate.use_count() == 1; }));
}

TEST(AbandonableCalls, AreMadeOneByOne) {
    AbandonableCalls calls;
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>(), second = std::make_shared<Gate>();
    second->open = true;
    calls.make(waitAt(gate), endMark, std::chrono::milliseconds(1));

    EXPECT_EQ(calls.make(waitAt(second), endMark, std::chrono::milliseconds(1)), CallOutcome::BUSY);
    EXPECT_FALSE(second->passed);

    gate->open = true;
    EXPECT_EQ(calls.make(waitAt(second), endMark, std::chrono::hours(1)), CallOutcome::DONE);
    EXPECT_TRUE(second->passed);
}

TEST(AbandonableCalls, ForOnePurposeLeaveThoseForAnotherAlone) {
    AbandonableCalls calls, others;
    const EndMark endMark;
    const auto gate = std::make_shared<Gate>(), second = std::make_shared<Gate>();
    second->open = true;
    calls.make(waitAt(gate), endMark, std::chrono::milliseconds(1));

    EXPECT_EQ(others.make(waitAt(second), endMark, std::chrono::hours(1)), CallOutcome::DONE);
    EXPECT_TRUE(second->passed);
    gate->open = true;
}

TEST(AbandonableCalls, ThrowHereWhatTheyThrow) {
    AbandonableCalls calls;
    const EndMark endMark;
    const auto fail = [] { throw std::runtime_error("no memory"); };

    EXPECT_THROW(calls.make(fail, endMark, std::chrono::hours(1)), std::runtime_error);
}

}  // namespace

}  // namespace intake
