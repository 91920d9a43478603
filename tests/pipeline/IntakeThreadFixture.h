#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "pipeline/IntakeThread.h"
#include "readers/Readers.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/pipeline/RecordingClient.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

/// One worker on a fake platform and one client. A source is a JSON file in memory whose member v
/// is the answer; the tests decide when and how the reader gets at it.
class IntakeThreadFixture : public testing::Test {
protected:
    static constexpr size_t REQUEST_MUTEX = 0;
    static constexpr size_t RESULT_MUTEX = 1;
    static constexpr const char* HELD = "held.json";

    using Step = FakeFiles::Step;
    using Deliveries = RecordingClient::Deliveries;

    /// The command that asks for the member v of a file.
    static std::string load(const std::string& file) {
        return "MODE |JSON| FILENAME |" + file + "| XPATH |v| TGT_MODE 4 NUM_ROWS || ";
    }

    /// Makes a source and asks for it.
    void post(const std::string& name) {
        platform_.files.put(name, R"({"v":")" + name + R"("})");
        thread_->PostCommand(client_, load(name));
    }

    /// Keeps the worker busy inside a reader until `letGo`.
    void keepBusy() {
        platform_.files.blockAt(Step::OPEN, HELD);
        post(HELD);
        platform_.files.waitUntilBlocked(HELD);
    }
    void letGo() { platform_.files.release(HELD); }

    bool deliverNext() {
        return eventually([&] { return thread_->DeliverOneAnswer(); });
    }

    /// Waits until the worker has gone to sleep so often since it began.
    bool hasSlept(int times) {
        return eventually([&] { return platform_.clock.sleepsUntilSignals() >= times; });
    }

    bool allWorkersEnded() {
        return eventually([] { return IntakeThread::liveWorkers() == 0; });
    }

    /// Waits until the answer of the last request is in the result ring: the reader has been
    /// through its file and the worker no longer holds the client.
    void waitUntilAnswered(const std::string& lastFile) {
        ASSERT_TRUE(eventually([&] { return platform_.files.timesOpened(lastFile) > 0; }));
        ASSERT_TRUE(eventually([&] { return client_.use_count() == 1; }));
    }

    TempWorkingDirectory directory_;
    FakePlatform platform_;
    std::shared_ptr<RecordingClient> client_ = std::make_shared<RecordingClient>();
    std::unique_ptr<IntakeThread> thread_ =
        std::make_unique<IntakeThread>(platform_.services, makerOfReaders(platform_.services));
};

}  // namespace intake
