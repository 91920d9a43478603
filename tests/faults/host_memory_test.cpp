// Every allocation on the host's thread fails in turn, while an instance lives through all that a
// host does with it. Nothing is thrown at the host, and the next instance is right.

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "tests/fakes/host/FakeHost.h"
#include "tests/faults/MemoryFaults.h"
#include "tests/plugin/SteppedPlatform.h"
#include "tests/plugin/TestRecord.h"
#include "tests/plugin/entry_points.h"

namespace intake {

namespace {

constexpr auto RIGHT = "Table={price=7.5;};";
constexpr int64_t BLOCKS_OF_AN_EXPRESSION = 2;  // which an instance leaves behind
constexpr int32_t PARAMETERS = 64;              // and more than there are

/// An instance after the other, each of which loads a file.
class RepeatedInstance {
public:
    RepeatedInstance() {
        host_.keepsCalls = false;
        platform_.files.put("a.json", R"({"price": 7.5})");
        host_.onCall("executeScript", [this] { executed_ = true; });
    }

    Attempt operator()() {
        const std::unique_ptr<TestRecord> record = place();
        executed_ = false;
        Attempt attempt;
        try {
            live(record.get()->get());
        } catch (...) {
            attempt.complaint = "throws at the host";
        }
        const Uncounted uncounted;
        attempt.keptBlocks = BLOCKS_OF_AN_EXPRESSION * std::exchange(host_.expressionsMade, 0);
        attempt.result = executed_ ? host_.store.lastScript() : "";
        attempt.success = attempt.result == RIGHT;
        return attempt;
    }

private:
    static std::unique_ptr<TestRecord> place() {
        const Uncounted uncounted;
        auto record = std::make_unique<TestRecord>();
        record->params().queryMode = 3;
        TestRecord::set(record->params().filename, "a.json");
        return record;
    }

    void live(HostRecord* record) {
        PLUGIN_INIT_FUNCTION(record);
        PLUGIN_LOAD(record);
        PLUGIN_AFTER_LOAD(record);
        PLUGIN_GUI_STATUS(record);
        for (int32_t parameter = -1; parameter < PARAMETERS; ++parameter) {
            PLUGIN_CHANGED_CALLBACK(record, parameter);
        }
        PLUGIN_EXEC_ACTION(record, 0);
        platform_.threads.step();
        PLUGIN_EXEC_PER_FIELD(record);
        PLUGIN_CLEANUP_FUNCTION(record);
        platform_.threads.step();
    }

    SteppedPlatform platform_;
    FakeHost host_;
    bool executed_ = false;
};

std::string faults(Failing failing) {
    return memoryFaults(
        []() -> Attempts {
            return [instance = std::make_shared<RepeatedInstance>()] { return (*instance)(); };
        },
        failing);
}

TEST(AHostWithoutMemory, ForOneAllocationGetsNoException) {
    EXPECT_EQ(faults(Failing::ONE), "");
}

TEST(AHostWithoutMemory, FromOneAllocationOnGetsNoException) {
    EXPECT_EQ(faults(Failing::ALL_BEHIND), "");
}

}  // namespace

}  // namespace intake
