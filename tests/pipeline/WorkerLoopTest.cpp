#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/pipeline/RecordingClient.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

/// The worker's loop, run on the test's own thread.
class WorkerLoopTest : public testing::Test {
protected:
    void request(const std::shared_ptr<IntakeClient>& client, const std::string& command) {
        worker_.post({client, command});
    }

    TempWorkingDirectory directory_;
    FakePlatform platform_;
    WorkerState worker_{platform_.services, makerOfReaders(platform_.services)};
};

TEST_F(WorkerLoopTest, LetsGoOfTheClientBeforeItSleeps) {
    const auto client = std::make_shared<RecordingClient>();
    request(client, "MODE |JSON| ");
    long references = 0;
    platform_.clock.onSleep = [&] {
        references = std::max(references, client.use_count());
        worker_.stop();
    };
    worker_.run();
    EXPECT_EQ(worker_.results.count(), 1);
    EXPECT_EQ(references, 1);
}

TEST_F(WorkerLoopTest, PausesTwentyMillisecondsBetweenRequestsThatWait) {
    const auto client = std::make_shared<RecordingClient>();
    request(client, "MODE |JSON| ");
    request(client, "MODE |JSON| ");
    std::vector<int32_t> answersAtPauses;
    platform_.clock.onSleep = [&] {
        answersAtPauses.push_back(worker_.results.count());
        if (worker_.results.count() == 2) worker_.stop();
    };
    worker_.run();
    EXPECT_EQ(answersAtPauses, (std::vector<int32_t>{1, 2}));
    EXPECT_EQ(platform_.clock.sleepsOf(std::chrono::milliseconds(20)), 2);
}

TEST_F(WorkerLoopTest, TriesAgainAfterTwentyMillisecondsWhileTheHostHoldsTheRing) {
    const auto client = std::make_shared<RecordingClient>();
    request(client, "MODE |JSON| ");
    platform_.threads.failTryLocks(0, 1);
    int32_t answersAtFirstPause = -1;
    platform_.clock.onSleep = [&] {
        if (answersAtFirstPause < 0) answersAtFirstPause = worker_.results.count();
        if (worker_.results.count() == 1) worker_.stop();
    };
    worker_.run();
    EXPECT_EQ(answersAtFirstPause, 0);
    EXPECT_EQ(worker_.results.count(), 1);
}

TEST_F(WorkerLoopTest, LetsTheReaderRestWhenNoRequestComesForAWhileAndAtTheEnd) {
    const auto client = std::make_shared<RecordingClient>();
    request(client, "MODE |JSON| FILENAME |http://data.example/a| ");
    std::thread thread([&] { worker_.run(); });
    EXPECT_TRUE(eventually([&] { return platform_.http.closings == 2; }));  // one for the load
    EXPECT_GE(platform_.clock.sleepsOf(std::chrono::seconds(20)), 1);
    worker_.stop();
    thread.join();
    EXPECT_EQ(platform_.http.closings, 3);
}

TEST_F(WorkerLoopTest, SleepsUntilItIsPostedToWhenItNeverRead) {
    std::thread thread([&] { worker_.run(); });
    EXPECT_TRUE(eventually([&] { return platform_.clock.sleepsUntilSignals() == 1; }));
    EXPECT_EQ(platform_.clock.sleepsOf(std::chrono::seconds(20)), 0);
    worker_.stop();
    thread.join();
}

TEST_F(WorkerLoopTest, ClearsTheStopFlagOnceItHasLeftTheSystemsServices) {
    int32_t flagOnLeaving = 0;
    platform_.threads.onLeave = [&] { flagOnLeaving = worker_.stopRequested; };
    worker_.stop();
    worker_.run();
    EXPECT_EQ(flagOnLeaving, 1);
    EXPECT_EQ(worker_.stopRequested, 0);
}

}  // namespace intake
