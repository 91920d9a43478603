// Many loads and many instances at once, through the entry points and on the real system.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <thread>
#include <vector>

#include "pipeline/IntakeThread.h"
#include "tests/fakes/host/FakeHost.h"
#include "tests/plugin/TestRecord.h"
#include "tests/plugin/entry_points.h"

namespace intake {
namespace {

const char* const SCRIPT = "Table={price=7.5;};";

/// A source for one test, gone with it.
class SourceFile {
public:
    SourceFile() {
        const auto moment = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                ("intake-stress-" + std::to_string(moment) + ".json");
        std::ofstream(path_) << R"({"price": 7.5})";
    }
    ~SourceFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    std::string path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

class Stress : public testing::Test {
protected:
    Stress() { host.keepsCalls = false; }

    std::unique_ptr<TestRecord> place() {
        auto record = std::make_unique<TestRecord>();
        PLUGIN_INIT_FUNCTION(record->get());
        record->params().queryMode = 3;
        TestRecord::set(record->params().filename, source.path());
        PLUGIN_LOAD(record->get());
        ++placed;
        return record;
    }

    static void waitForAllWorkers() {
        while (IntakeThread::liveWorkers() != 0) {
            nap();
        }
    }

    /// Leaves the processor to the workers.
    static void nap() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

    void expectOnlyTheExpressionsRemain() {
        waitForAllWorkers();
        EXPECT_EQ(IntakeThread::liveWorkers(), 0);
        EXPECT_EQ(host.expressionsMade, placed);
        EXPECT_EQ(host.expressionsGone, 0);
    }

    SourceFile source;
    FakeHost host;
    int placed = 0;
};

/// One instance that loads again and again.
struct Loader {
    std::unique_ptr<TestRecord> record;
    int asked = 0;
    int answered = 0;

    void frame(int loads) {
        constexpr int RING = 10;
        while (asked < loads && asked - answered < RING) {
            PLUGIN_EXEC_ACTION(record->get(), 0);
            ++asked;
        }
        PLUGIN_EXEC_PER_FIELD(record->get());
    }
};

TEST_F(Stress, TenThousandLoadsAreAllAnswered) {
    constexpr int INSTANCES = 200;
    constexpr int LOADS = 50;
    Loader* current = nullptr;
    host.onCall("executeScript", [&] {
        ASSERT_EQ(host.store.lastScript(), SCRIPT);
        ++current->answered;
    });
    std::vector<Loader> loaders(INSTANCES);
    for (Loader& loader : loaders) {
        loader.record = place();
    }
    for (int unfinished = INSTANCES; unfinished > 0;) {
        unfinished = 0;
        for (Loader& loader : loaders) {
            current = &loader;
            loader.frame(LOADS);
            unfinished += loader.answered < LOADS ? 1 : 0;
        }
        ASSERT_FALSE(HasFatalFailure());
        nap();
    }
    for (Loader& loader : loaders) {
        EXPECT_EQ(loader.answered, LOADS);
        PLUGIN_CLEANUP_FUNCTION(loader.record->get());
    }
    expectOnlyTheExpressionsRemain();
}

TEST_F(Stress, AThousandInstancesAreDeletedWhileTheyLoad) {
    constexpr int BATCHES = 20;
    constexpr int BATCH = 50;
    host.onCall("executeScript", [&] { ASSERT_EQ(host.store.lastScript(), SCRIPT); });
    for (int batch = 0; batch < BATCHES; ++batch) {
        std::vector<std::unique_ptr<TestRecord>> records;
        for (int each = 0; each < BATCH; ++each) {
            records.push_back(place());
            PLUGIN_EXEC_ACTION(records.back()->get(), 0);
            PLUGIN_EXEC_ACTION(records.back()->get(), 0);
        }
        // Some go before their worker has begun, some while it reads, some with answers waiting.
        for (int each = 0; each < BATCH; ++each) {
            HostRecord* const record = records[static_cast<size_t>(each)]->get();
            if (each % 3 == 1) PLUGIN_EXEC_ACTION(record, 2);
            if (each % 5 == 2) PLUGIN_LOAD(record);
            if (each % 2 == 0) nap();
            PLUGIN_EXEC_PER_FIELD(record);
            PLUGIN_CLEANUP_FUNCTION(record);
        }
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_EQ(placed, BATCHES * BATCH);
    expectOnlyTheExpressionsRemain();
}

TEST_F(Stress, APostUpdateActionMayDeleteEachInstanceInItsFirstDelivery) {
    constexpr int INSTANCES = 100;
    std::vector<std::unique_ptr<TestRecord>> records;
    for (int each = 0; each < INSTANCES; ++each) {
        records.push_back(place());
        PLUGIN_EXEC_ACTION(records.back()->get(), 0);
    }
    HostRecord* current = nullptr;
    host.onCall("executeExtended", [&] { PLUGIN_CLEANUP_FUNCTION(current); });
    for (int left = INSTANCES; left > 0;) {
        left = 0;
        for (const auto& record : records) {
            current = record->get();
            PLUGIN_EXEC_PER_FIELD(current);
            left += current->instance != nullptr ? 1 : 0;
        }
        nap();
    }
    expectOnlyTheExpressionsRemain();
}

}  // namespace
}  // namespace intake
