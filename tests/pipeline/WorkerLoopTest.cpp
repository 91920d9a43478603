#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/pipeline/RecordingClient.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// The worker's loop, run on the test's own thread.
class WorkerLoopTest : public testing::Test {
protected:
    void request(const std::shared_ptr<IntakeClient>& client, const std::string& command) {
        worker_.put(worker_.requests, std::chrono::milliseconds(1), {client, command});
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
        worker_.stopRequested = 1;
    };
    worker_.run();
    EXPECT_EQ(worker_.results.count(), 1);
    EXPECT_EQ(references, 1);
}

TEST_F(WorkerLoopTest, ClearsTheStopFlagOnceItHasLeftTheSystemsServices) {
    int32_t flagOnLeaving = 0;
    platform_.threads.onLeave = [&] { flagOnLeaving = worker_.stopRequested; };
    worker_.stopRequested = 1;
    worker_.run();
    EXPECT_EQ(flagOnLeaving, 1);
    EXPECT_EQ(worker_.stopRequested, 0);
}

}  // namespace intake
