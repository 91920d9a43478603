#include <thread>

#include "tests/platform/PlatformFixture.h"

namespace intake {

class MutexContract : public PlatformContract {
protected:
    /// Whether a thread that does not hold the mutex gets it now.
    bool isFree() {
        bool free = false;
        std::thread([&] {
            free = mutex_->tryLock();
            if (free) {
                mutex_->unlock();
            }
        }).join();
        return free;
    }

    std::unique_ptr<Mutex> mutex_ = threads_.createMutex();
};

INSTANTIATE_TEST_SUITE_P(Platforms, MutexContract, testing::ValuesIn(BOTH_PLATFORMS), fixtureName);

TEST_P(MutexContract, ANewMutexIsFree) {
    EXPECT_TRUE(isFree());
}

TEST_P(MutexContract, TryLockFailsWhileAnotherThreadHoldsTheMutex) {
    ASSERT_TRUE(mutex_->lock());
    EXPECT_FALSE(isFree());
    mutex_->unlock();
    EXPECT_TRUE(isFree());
}

TEST_P(MutexContract, TryLockHoldsTheMutexAsLockDoes) {
    ASSERT_TRUE(mutex_->tryLock());
    EXPECT_FALSE(isFree());
    mutex_->unlock();
    EXPECT_TRUE(isFree());
}

TEST_P(MutexContract, TheThreadThatHoldsItMayTakeItAgainAndFreesItWithTheLastUnlock) {
    ASSERT_TRUE(mutex_->lock());
    ASSERT_TRUE(mutex_->lock());
    ASSERT_TRUE(mutex_->tryLock());
    mutex_->unlock();
    mutex_->unlock();
    EXPECT_FALSE(isFree());
    mutex_->unlock();
    EXPECT_TRUE(isFree());
}

TEST_P(MutexContract, LockWaitsUntilTheHolderLetsGo) {
    int sum = 0;
    const auto addAThousand = [&] {
        for (int i = 0; i < 1000; ++i) {
            ASSERT_TRUE(mutex_->lock());
            ++sum;
            mutex_->unlock();
        }
    };
    std::thread other(addAThousand);
    addAThousand();
    other.join();
    EXPECT_EQ(sum, 2000);
}

TEST_P(MutexContract, TwoMutexesAreIndependent) {
    const std::unique_ptr<Mutex> another = threads_.createMutex();
    ASSERT_TRUE(another->lock());
    EXPECT_TRUE(isFree());
    another->unlock();
}

}  // namespace intake
