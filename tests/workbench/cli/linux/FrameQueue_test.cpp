#include "workbench/cli/serve/FrameQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>

using workbench::FrameQueue;

TEST(FrameQueueTest, MakesTheCallsInTheirOrder) {
    FrameQueue queue;
    std::string made;
    queue.post([&] { made += 'a'; });
    queue.post([&] { made += 'b'; });
    EXPECT_EQ(made, "");
    queue.runFrame();
    EXPECT_EQ(made, "ab");
    queue.runFrame();
    EXPECT_EQ(made, "ab");
}

TEST(FrameQueueTest, LeavesForTheNextFrameWhatTakesTooLong) {
    FrameQueue queue;
    std::string made;
    queue.post([&] {
        made += 'a';
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    });
    queue.post([&] { made += 'b'; });
    queue.runFrame();
    EXPECT_EQ(made, "a");
    queue.post([&] { made += 'c'; });
    while (made.size() < 3)  // a frame may have no time left for the second
        queue.runFrame();
    EXPECT_EQ(made, "abc");
}

TEST(FrameQueueTest, MakesWhatWasLeftBeforeWhatIsPostedMeanwhile) {
    FrameQueue queue;
    std::string made;
    queue.post([&] {
        queue.post([&] { made += 'c'; });
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    });
    queue.post([&] { made += 'b'; });
    queue.runFrame();
    EXPECT_EQ(made, "");
    while (made.size() < 2)
        queue.runFrame();
    EXPECT_EQ(made, "bc");
}

TEST(FrameQueueTest, TakesNoMoreThanAThousand) {
    FrameQueue queue;
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(queue.post([] {}));
    EXPECT_FALSE(queue.post([] {}));
}

TEST(FrameQueueTest, ACallMayPostAnother) {
    FrameQueue queue;
    int made = 0;
    queue.post([&] { queue.post([&] { ++made; }); });
    queue.runFrame();
    EXPECT_EQ(made, 0);
    queue.runFrame();
    EXPECT_EQ(made, 1);
}

TEST(FrameQueueTest, AThreadWaitsForWhatACallReturns) {
    FrameQueue queue;
    std::atomic<int> answer = 0;
    const std::jthread asking([&](const std::stop_token& stop) {
        answer = queue.ask<int>([] { return 42; }, stop).value_or(-1);
    });
    while (answer == 0)
        queue.runFrame();
    EXPECT_EQ(answer, 42);
}

TEST(FrameQueueTest, AThreadWaitsForAPlace) {
    FrameQueue queue;
    while (queue.post([] {})) {
    }
    std::atomic<int> answer = 0;
    const std::jthread asking([&](const std::stop_token& stop) {
        answer = queue.ask<int>([] { return 42; }, stop).value_or(-1);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    while (answer == 0)
        queue.runFrame();
    EXPECT_EQ(answer, 42);
}

TEST(FrameQueueTest, AThreadThatWaitsInVainEndsWhenAStopIsRequested) {
    FrameQueue queue;
    bool isMade = false;
    std::optional<int> answer = 1;
    std::jthread asking([&](const std::stop_token& stop) {
        answer = queue.ask<int>(
            [&] {
                isMade = true;
                return 42;
            },
            stop);
    });
    asking.request_stop();
    asking.join();
    EXPECT_FALSE(answer);
    queue.runFrame();
    EXPECT_FALSE(isMade);
}
