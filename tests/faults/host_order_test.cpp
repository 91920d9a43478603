// A host that calls the entry points in random order, legal or not, and again from within every one
// of its own functions; that deletes and binds instances there, and gives records up.

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <vector>

#include "pipeline/IntakeThread.h"
#include "tests/fakes/host/FakeHost.h"
#include "tests/faults/extent.h"
#include "tests/plugin/TestRecord.h"
#include "tests/plugin/entry_points.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

/// Keeps a process from holding many thousand idle workers.
constexpr int32_t MOST_WORKERS = 200;

class RandomHost {
public:
    explicit RandomHost(uint32_t seed)
        : random_(seed), source_(files_.write("a.json", "{\"v\":7}")) {
        host_.keepsCalls = false;
        host_.store.add("READER_CONSOLE");
        host_.onEveryCall = [this] { callBack(); };
        for (Place& place : places_) {
            fill(place);
        }
    }

    ~RandomHost() {
        host_.onEveryCall = nullptr;
        for (Place& place : places_) {
            giveUp(place);
        }
    }

    void step() {
        Place& place = places_[below(std::size(places_))];
        HostRecord* const record = place.record->get();
        const int without = record->instance == nullptr ? 1 : 0;
        place.usesWithoutInstance += without;
        enter(place, record);
        place.usesWithoutInstance -= without;
    }

    bool hasTooManyWorkers() const { return IntakeThread::liveWorkers() > MOST_WORKERS; }

private:
    /// Where the host keeps a record.
    struct Place {
        std::unique_ptr<TestRecord> record;
        int usesWithoutInstance = 0;  // entry points that were given it without one
    };

    size_t below(size_t count) { return random_() % count; }
    bool happens(size_t oneIn) { return below(oneIn) == 0; }

    void callBack() {
        constexpr int DEEPEST = 4;
        if (depth_ < DEEPEST && happens(6)) {
            ++depth_;
            step();
            --depth_;
        }
    }

    void enter(Place& place, HostRecord* record) {
        void* out = nullptr;
        char name[] = "F";
        switch (below(13)) {
            case 0:
                return PLUGIN_LOAD(record);
            case 1:
                return PLUGIN_AFTER_LOAD(record);
            case 2:
                return remove(place);
            case 3:
                return PLUGIN_EXEC_ACTION(record, static_cast<int32_t>(below(4)) - 1);
            case 4:
                return PLUGIN_DISPATCHER_CALLBACK(record, CODES[below(std::size(CODES))], name,
                                                  &out);
            case 5:
                return PLUGIN_CHANGED_CALLBACK(record, static_cast<int32_t>(below(60)) - 3);
            case 6:
                return PLUGIN_GUI_STATUS(record);
            case 7:
                return PLUGIN_NEW_GEOM(record, static_cast<int32_t>(below(5)));
            case 8:
                return change(*record);
            default:
                return PLUGIN_EXEC_PER_FIELD(record);
        }
    }

    /// Deletes the instance, and then frees the record, also when the plugin is inside of a call of
    /// that very instance.
    void remove(Place& place) {
        HostRecord* const record = place.record->get();
        PLUGIN_CLEANUP_FUNCTION(record);
        const bool isSame = place.record->get() == record;
        if (isSame && record->instance == nullptr && place.usesWithoutInstance == 0) {
            fill(place);
        }
    }

    /// As the editor does. The instances that a state makes anew are never deleted by the frame.
    void change(HostRecord& record) {
        ReaderParams& p = record.params;
        p.queryMode = static_cast<int32_t>(below(7)) - 1;
        p.mode = static_cast<int32_t>(below(6));
        p.show_data = happens(2) ? 1 : 0;
        p.autoLoad = happens(2) ? 1 : 0;
        p.autoLoadInterval = happens(2) ? 0.0F : 0.01F;
        record.IsOther = happens(3) ? 1 : 0;
        record.UseConvTable = happens(3) ? 1 : 0;
        if (record.instance == nullptr && depth_ == 0) {
            record.Magic = static_cast<int32_t>(below(4));
        }
    }

    void fill(Place& place) {
        auto record = std::make_unique<TestRecord>();
        record->params().queryMode = QUERY_JSON;
        TestRecord::set(record->params().filename, source_);
        PLUGIN_INIT_FUNCTION(record->get());
        place.record = std::move(record);
    }

    void giveUp(Place& place) {
        place.record->get()->Magic = MAGIC_BOUND;
        PLUGIN_CLEANUP_FUNCTION(place.record->get());
    }

    static constexpr std::array<int32_t, 5> CODES{0x4649454C, 0x494E4954, 0x55444154, 0x52454654,
                                                  7};

    std::minstd_rand random_;
    TempDirectory files_;
    const std::string source_;
    FakeHost host_;
    std::array<Place, 6> places_;
    int depth_ = 0;
};

TEST(ARandomOrderOfCalls, EndsNeitherTheHostNorLeavesAnythingBehind) {
    const int steps = triesAllFaults() ? 1'000'000 : 20'000;
    {
        RandomHost host(1);
        for (int step = 0; step < steps; ++step) {
            host.step();
            if (host.hasTooManyWorkers()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            }
        }
    }
    EXPECT_TRUE(eventually([] { return IntakeThread::liveWorkers() == 0; }));
}

}  // namespace

}  // namespace intake
