#include "pipeline/CircBuffer.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <thread>
#include <vector>

#include "platform/Platform.h"

namespace intake {

namespace {

class CircBufferTest : public testing::Test {
protected:
    void put(int first, int last) {
        for (int entry = first; entry <= last; ++entry) {
            ring_.reserve() = entry;
        }
    }

    std::vector<int> takeAll() {
        std::vector<int> taken;
        while (ring_.count() > 0) {
            taken.push_back(ring_.take());
        }
        return taken;
    }

    CircBuffer<int> ring_{systemPlatform().threads.createMutex()};
};

using Entries = std::vector<int>;

}  // namespace

TEST_F(CircBufferTest, IsEmptyAtFirst) {
    EXPECT_EQ(ring_.count(), 0);
}

TEST_F(CircBufferTest, EntriesComeOutInTheOrderInWhichTheyWentIn) {
    put(1, 4);
    EXPECT_EQ(ring_.count(), 4);
    EXPECT_EQ(takeAll(), (Entries{1, 2, 3, 4}));
}

TEST_F(CircBufferTest, TheHeadWrapsFromTenToZero) {
    put(1, 7);
    takeAll();
    put(8, 17);
    EXPECT_EQ(ring_.count(), 10);
    EXPECT_EQ(takeAll(), (Entries{8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST_F(CircBufferTest, AnEleventhEntryTakesTheSlotOfTheOldest) {
    put(1, 10);
    const int& slot = ring_.reserve();
    EXPECT_EQ(slot, 1);
    EXPECT_EQ(ring_.count(), 11);
}

TEST_F(CircBufferTest, TwelveEntriesCountTwelveAndComeOutAsTheArithmeticSays) {
    put(1, 12);
    EXPECT_EQ(ring_.count(), 12);
    EXPECT_EQ(takeAll(), (Entries{11, 12, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST_F(CircBufferTest, AnOverflowBehindAHeadInTheMiddleOverwritesTheOldest) {
    put(1, 5);
    takeAll();
    put(6, 16);
    EXPECT_EQ(takeAll(), (Entries{16, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST_F(CircBufferTest, WorksAsBeforeWhenAnOverflowHasBeenTaken) {
    put(1, 25);
    takeAll();
    put(26, 28);
    EXPECT_EQ(takeAll(), (Entries{26, 27, 28}));
}

TEST_F(CircBufferTest, AReservedSlotStillHoldsWhatItHeldBefore) {
    put(1, 1);
    takeAll();
    put(2, 10);
    EXPECT_EQ(ring_.reserve(), 1);
}

TEST_F(CircBufferTest, ATakenEntryStaysInItsSlot) {
    put(1, 2);
    const int& first = ring_.take();
    const int& second = ring_.take();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST_F(CircBufferTest, IsAQueueAsLongAsItHoldsTenAtMost) {
    std::mt19937 random(1);
    std::deque<int> queue;
    for (int entry = 0; entry < 10000; ++entry) {
        if (random() % 2 == 0 && queue.size() < 10) {
            ring_.reserve() = entry;
            queue.push_back(entry);
        } else if (!queue.empty()) {
            ASSERT_EQ(ring_.take(), queue.front());
            queue.pop_front();
        }
        ASSERT_EQ(ring_.count(), static_cast<int32_t>(queue.size()));
    }
}

TEST_F(CircBufferTest, TheCountMayBeReadWithoutTheMutex) {
    std::thread writer([&] {
        for (int entry = 0; entry < 1000; ++entry) {
            ring_.mutex().lock();
            ring_.reserve() = entry;
            ring_.mutex().unlock();
        }
    });
    while (ring_.count() < 1000) {
        std::this_thread::yield();
    }
    writer.join();
    EXPECT_EQ(ring_.count(), 1000);
}

}  // namespace intake
