#include <atomic>
#include <memory>
#include <thread>

#include "tests/platform/PlatformFixture.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

constexpr std::chrono::minutes LONG_ENOUGH{2};

/// A body that runs until the test lets it end. Shared, since it may outlive the test. It waits
/// without a lock: a thread that is ended by force would keep it.
class HeldBody {
public:
    std::function<void()> body() {
        return [mayEnd = mayEnd_, started = started_] {
            *started = true;
            while (!*mayEnd) {
                std::this_thread::yield();
            }
        };
    }
    bool hasStarted() const {
        return eventually([this] { return started_->load(); });
    }
    void letEnd() { *mayEnd_ = true; }

private:
    std::shared_ptr<std::atomic<bool>> mayEnd_ = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<std::atomic<bool>> started_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace

using ThreadsContract = PlatformContract;

INSTANTIATE_TEST_SUITE_P(Platforms, ThreadsContract, testing::ValuesIn(BOTH_PLATFORMS),
                         fixtureName);

TEST_P(ThreadsContract, TheBodyRunsOnAThreadOfItsOwn) {
    std::thread::id where;
    const auto handle = threads_.start([&] { where = std::this_thread::get_id(); });
    ASSERT_TRUE(handle->waitFor(LONG_ENOUGH));
    EXPECT_NE(where, std::thread::id());
    EXPECT_NE(where, std::this_thread::get_id());
}

TEST_P(ThreadsContract, WaitForIsFalseWhileTheThreadStillRuns) {
    HeldBody held;
    const auto handle = threads_.start(held.body());
    EXPECT_FALSE(handle->waitFor(std::chrono::milliseconds(0)));
    EXPECT_FALSE(handle->waitFor(std::chrono::milliseconds(5)));
    held.letEnd();
    EXPECT_TRUE(handle->waitFor(LONG_ENOUGH));
}

TEST_P(ThreadsContract, WaitForOfAThreadThatHasEndedIsTrueEachTime) {
    const auto handle = threads_.start([] {});
    EXPECT_TRUE(handle->waitFor(LONG_ENOUGH));
    EXPECT_TRUE(handle->waitFor(std::chrono::milliseconds(0)));
}

TEST_P(ThreadsContract, WhatTheBodyHoldsIsGoneWhenTheEndIsSeen) {
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    const auto handle = threads_.start([held = std::move(held)] {});
    ASSERT_TRUE(handle->waitFor(LONG_ENOUGH));
    EXPECT_TRUE(watched.expired());
}

TEST_P(ThreadsContract, RunningThreadsHaveDifferentIdentifiers) {
    HeldBody first;
    HeldBody second;
    const auto firstHandle = threads_.start(first.body());
    const auto secondHandle = threads_.start(second.body());
    EXPECT_NE(firstHandle->identifier(), secondHandle->identifier());
    first.letEnd();
    second.letEnd();
    EXPECT_TRUE(firstHandle->waitFor(LONG_ENOUGH));
    EXPECT_TRUE(secondHandle->waitFor(LONG_ENOUGH));
}

TEST_P(ThreadsContract, TerminateReturnsWhileTheThreadIsStillInsideItsBody) {
    HeldBody held;
    const auto handle = threads_.start(held.body());
    ASSERT_TRUE(held.hasStarted());
    handle->terminate();
    held.letEnd();
    EXPECT_TRUE(handle->waitFor(LONG_ENOUGH));
}

TEST_P(ThreadsContract, TerminateOfAThreadThatHasEndedDoesNothing) {
    const auto handle = threads_.start([] {});
    ASSERT_TRUE(handle->waitFor(LONG_ENOUGH));
    handle->terminate();
    handle->terminate();
    EXPECT_TRUE(handle->waitFor(std::chrono::milliseconds(0)));
}

TEST_P(ThreadsContract, AThreadRunsOnWhenItsHandleIsClosed) {
    const auto finished = std::make_shared<std::atomic<bool>>(false);
    HeldBody held;
    auto handle = threads_.start([body = held.body(), finished] {
        body();
        *finished = true;
    });
    handle.reset();
    held.letEnd();
    EXPECT_TRUE(eventually([&] { return finished->load(); }));
}

TEST_P(ThreadsContract, EveryWorkerMayEnterAndLeave) {
    std::atomic<int> passed = 0;
    const auto body = [&] {
        threads_.enterWorker();
        threads_.leaveWorker();
        ++passed;
    };
    const auto first = threads_.start(body);
    const auto second = threads_.start(body);
    ASSERT_TRUE(first->waitFor(LONG_ENOUGH));
    ASSERT_TRUE(second->waitFor(LONG_ENOUGH));
    EXPECT_EQ(passed, 2);
}

}  // namespace intake
