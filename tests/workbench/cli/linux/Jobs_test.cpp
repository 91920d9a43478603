#include "workbench/cli/serve/Jobs.h"

#include <gtest/gtest.h>

#include <future>

using workbench::Jobs;
using Clock = std::chrono::steady_clock;

namespace {

constexpr std::chrono::seconds patience{20};

/// A job that goes on until it is let go, whoever asks it to stop, as one that waits for a disk.
class Stuck {
public:
    Jobs::Job job() {
        return [this](const std::stop_token&) {
            begun_.set_value();
            letGo_.get_future().wait();
        };
    }
    void waitUntilBegun() { begun_.get_future().wait(); }
    void letGo() { letGo_.set_value(); }

private:
    std::promise<void> begun_;
    std::promise<void> letGo_;
};

}  // namespace

TEST(Jobs, AreDoneWhileAnotherOneIsStuck) {
    Stuck stuck;
    Jobs jobs(2);
    jobs.add(stuck.job());
    stuck.waitUntilBegun();
    std::promise<void> done;
    EXPECT_TRUE(jobs.add([&](const std::stop_token&) { done.set_value(); }));
    EXPECT_EQ(done.get_future().wait_for(patience), std::future_status::ready);
    stuck.letGo();
}

TEST(Jobs, AreNotWaitedForWhenTheyDoNotEnd) {
    Stuck stuck;
    Jobs jobs(2);
    jobs.add(stuck.job());
    stuck.waitUntilBegun();
    jobs.requestStop();
    EXPECT_FALSE(jobs.waitUntil(Clock::now()));
    stuck.letGo();
    EXPECT_TRUE(jobs.waitUntil(Clock::now() + patience));
}

TEST(Jobs, AreNotBegunAfterAStop) {
    Jobs jobs(1);
    jobs.requestStop();
    EXPECT_TRUE(jobs.waitUntil(Clock::now() + patience));
    bool isDone = false;
    jobs.add([&](const std::stop_token&) { isDone = true; });
    EXPECT_TRUE(jobs.waitUntil(Clock::now() + patience));
    EXPECT_FALSE(isDone);
}

TEST(Jobs, AreRefusedWhenTooManyWait) {
    Stuck stuck;
    Jobs jobs(1);
    jobs.add(stuck.job());
    stuck.waitUntilBegun();
    for (int i = 0; i < 16; ++i)
        EXPECT_TRUE(jobs.add([](const std::stop_token&) {}));
    EXPECT_FALSE(jobs.add([](const std::stop_token&) {}));
    stuck.letGo();
}

TEST(Jobs, MayBeAddedByWhatOneHeldWhenThatGoes) {
    Jobs jobs(1);
    std::promise<void> done;
    const auto finish = [&](const std::stop_token&) { done.set_value(); };
    int held = 0;
    const auto letGo = [&](const int*) { jobs.add(finish); };
    jobs.add([guard = std::shared_ptr<int>(&held, letGo)](const std::stop_token&) {});
    EXPECT_EQ(done.get_future().wait_for(patience), std::future_status::ready);
}
