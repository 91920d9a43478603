// Workers that end while a server keeps them waiting.

#include <gtest/gtest.h>

#include "pipeline/IntakeThread.h"
#include "readers/Readers.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

struct DeafClient final : IntakeClient {
    void deliver(bool, const std::string&, const std::string&) override { ++deliveries; }
    int deliveries = 0;
};

class HttpWorkerEndTest : public testing::Test {
protected:
    /// Returns when the server has the request and answers no more.
    void loadFromStalledServer() {
        thread_->PostCommand(client_, "MODE |JSON| FILENAME |" + server_.url("/") + "| ");
        ASSERT_TRUE(eventually([&] { return !server_.requests().empty(); }));
    }

    static bool allWorkersEnded() {
        return eventually([] { return IntakeThread::liveWorkers() == 0; });
    }

    TempWorkingDirectory directory_;
    ScriptedServer server_{{Reply{"HTTP/1.1 200 OK\r\nContent-Le", Then::STALL}}};
    std::shared_ptr<DeafClient> client_ = std::make_shared<DeafClient>();
    std::unique_ptr<IntakeThread> thread_ =
        std::make_unique<IntakeThread>(systemPlatform(), makerOfReaders(systemPlatform()));
};

TEST_F(HttpWorkerEndTest, AWorkerOfADestroyedThreadGivesItsTransferUp) {
    loadFromStalledServer();

    thread_.reset();

    EXPECT_TRUE(allWorkersEnded());
    EXPECT_EQ(client_->deliveries, 0);
}

TEST_F(HttpWorkerEndTest, ATerminatedWorkerGivesItsTransferUpAndAnswersNoMore) {
    loadFromStalledServer();

    thread_->Terminate();

    EXPECT_TRUE(allWorkersEnded());
    thread_->DeliverOneAnswer();
    EXPECT_EQ(client_->deliveries, 0);
}

}  // namespace

}  // namespace intake
