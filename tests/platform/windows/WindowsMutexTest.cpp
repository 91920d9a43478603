#include "platform/windows/WindowsMutex.h"

#include <gtest/gtest.h>

#include <thread>

namespace intake {

/// A worker that is ended by force may hold one.
TEST(WindowsMutex, OfAThreadThatHasGoneIsTakenAndCanBeGivenBack) {
    WindowsMutex mutex;
    std::thread([&] { EXPECT_TRUE(mutex.lock()); }).join();
    ASSERT_TRUE(mutex.tryLock());
    mutex.unlock();
    std::thread([&] {
        EXPECT_TRUE(mutex.tryLock());
        mutex.unlock();
    }).join();
}

}  // namespace intake
