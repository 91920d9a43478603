#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <thread>

#include "platform/Platform.h"

namespace intake {

namespace {

TEST(BrokenPipe, AWorkerThatWritesToAPeerThatIsGoneDoesNotEndTheProcess) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    close(ends[0]);
    int failure = 0;

    std::thread([&] {
        systemPlatform().threads.enterWorker();
        failure = write(ends[1], "x", 1) < 0 ? errno : 0;
    }).join();
    close(ends[1]);

    EXPECT_EQ(failure, EPIPE);
}

}  // namespace

}  // namespace intake
