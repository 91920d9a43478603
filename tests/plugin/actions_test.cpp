#include <cmath>

#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

/// An instance that reads JSON, and what one executed answer looks like.
class LoadTest : public PluginTest {
protected:
    void SetUp() override {
        params().queryMode = 3;
        TestRecord::set(params().filename, "price.json");
        platform.files.put("price.json", R"({"price": 7.5})");
        bindInstance();
    }

    void pressLoad() { PLUGIN_EXEC_ACTION(record.get(), 0); }

    /// Calls the per-field hook and returns what it did beside looking at the initialisation.
    Calls nextFrame() {
        PLUGIN_EXEC_PER_FIELD(record.get());
        Calls calls = host.takeCalls();
        calls.erase(calls.begin());
        return calls;
    }

    static Calls executed(const std::string& script) {
        return {"store.executeScript(" + printed(script) + ", 0)", "_api__get_sceneid_local()",
                "IDataHandlerImpl::getCobalt(5, false)",
                R"("".executeExtended(sceneStore, _api__lumo_send_command, 0))"};
    }

    const Calls success = executed("Table={price=7.5;};");
};

using Actions = LoadTest;

TEST_F(Actions, ZeroLoadsAndTheNextFrameExecutesTheAnswer) {
    pressLoad();
    EXPECT_EQ(host.takeCalls(), Calls({"_api__global_get_font_encoding()"}));
    EXPECT_EQ(nextFrame(), Calls());  // the worker has not come to it yet
    platform.threads.step();
    EXPECT_EQ(nextFrame(), success);
    EXPECT_EQ(nextFrame(), Calls());
}

TEST_F(Actions, ALoadReadsTheParametersAsTheyAreWhenItIsPressed) {
    pressLoad();
    host.takeCalls();
    TestRecord::set(params().table, "Later");
    platform.threads.step();
    EXPECT_EQ(nextFrame(), success);
}

TEST_F(Actions, AFailedLoadExecutesTheFallback) {
    TestRecord::set(params().filename, "nowhere.json");
    pressLoad();
    host.takeCalls();
    platform.threads.step();
    EXPECT_EQ(nextFrame(), executed("READER_NUM_RECORDS=0;"));
}

TEST_F(Actions, OneAndThoseAboveTwoDoNothing) {
    for (const int32_t action : {1, 3, 4, 100, -1}) {
        PLUGIN_EXEC_ACTION(record.get(), action);
    }
    EXPECT_EQ(host.takeCalls(), Calls());
    platform.threads.step();
    EXPECT_EQ(nextFrame(), Calls());
    pressLoad();
    host.takeCalls();
    platform.threads.step();
    EXPECT_EQ(nextFrame(), success);  // the worker is still there
}

TEST_F(Actions, TwoEndsTheWorkerAndLaterLoadsAreNeverAnswered) {
    pressLoad();
    PLUGIN_EXEC_ACTION(record.get(), 2);
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 0U);
    pressLoad();
    host.takeCalls();
    platform.threads.step();
    EXPECT_EQ(nextFrame(), Calls());
}

TEST_F(Actions, AfterTwoTheNextBindBringsANewWorker) {
    PLUGIN_EXEC_ACTION(record.get(), 2);
    PLUGIN_EXEC_ACTION(record.get(), 2);
    PLUGIN_LOAD(record.get());
    host.initPending = 0;
    pressLoad();
    host.takeCalls();
    platform.threads.step();
    EXPECT_EQ(nextFrame(), success);
}

TEST_F(Actions, AreDroppedWithoutAnInstance) {
    PLUGIN_CLEANUP_FUNCTION(record.get());
    host.takeCalls();
    for (const int32_t action : {0, 1, 2, 3}) {
        PLUGIN_EXEC_ACTION(record.get(), action);
    }
    EXPECT_EQ(host.takeCalls(), Calls());
}

/// Notes what it is asked to do.
class NotingIntake : public Intake {
public:
    void onExecAction(int32_t number, void* parameters) override {
        action = number;
        shown = parameters;
    }

    int32_t action = -1;
    void* shown = nullptr;
};

TEST_F(Actions, ReachTheInstanceWithTheParametersOfTheRecord) {
    PLUGIN_CLEANUP_FUNCTION(record.get());
    auto* const instance = new NotingIntake;
    record->instance = instance;
    PLUGIN_EXEC_ACTION(record.get(), 7);
    EXPECT_EQ(instance->action, 7);
    EXPECT_EQ(instance->shown, &record->params);
}

TEST_F(Actions, DoNotCheckTheState) {
    record->Magic = 1;
    Intake* const instance = record->instance;
    PLUGIN_EXEC_ACTION(record.get(), 0);
    EXPECT_EQ(record->instance, instance);
    EXPECT_EQ(record->Magic, 1);
}

using Delivery = LoadTest;

TEST_F(Delivery, BringsAtMostOneAnswerPerFrame) {
    for (int load = 0; load < 3; ++load) {
        pressLoad();
    }
    host.takeCalls();
    for (int load = 0; load < 3; ++load) {
        platform.threads.step();
    }
    for (int load = 0; load < 3; ++load) {
        EXPECT_EQ(nextFrame(), success);
    }
    EXPECT_EQ(nextFrame(), Calls());
}

TEST_F(Delivery, KeepsTheOrderOfTheLoads) {
    for (const char* table : {"First", "Second"}) {
        TestRecord::set(params().table, table);
        pressLoad();
        platform.threads.step();
    }
    host.takeCalls();
    EXPECT_EQ(nextFrame(), executed("First={price=7.5;};"));
    EXPECT_EQ(nextFrame(), executed("Second={price=7.5;};"));
}

TEST_F(Delivery, DropsTheAnswersOfAnInstanceThatWasDeleted) {
    pressLoad();
    platform.threads.step();
    PLUGIN_CLEANUP_FUNCTION(record.get());
    host.takeCalls();
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));
}

TEST_F(Delivery, AFreshWorkerDoesNotBringTheAnswersOfTheOneBefore) {
    pressLoad();
    platform.threads.step();
    PLUGIN_LOAD(record.get());
    host.initPending = 0;
    host.takeCalls();
    EXPECT_EQ(nextFrame(), Calls());
}

/// Loads by themselves, counted by the answers that they bring.
class AutomaticLoad : public LoadTest {
protected:
    void SetUp() override {
        LoadTest::SetUp();
        params().autoLoad = 1;
        params().autoLoadInterval = 10.0F;
    }

    /// Whether the frame at this time started a load.
    bool loadsAt(double milliseconds) {
        platform.clock.now = milliseconds;
        const Calls calls = nextFrame();
        const bool loads =
            std::count(calls.begin(), calls.end(), "_api__global_get_font_encoding()") == 1;
        platform.threads.step();
        return loads;
    }

    void changed(int32_t number) { PLUGIN_CHANGED_CALLBACK(record.get(), 11 + number); }
};

TEST_F(AutomaticLoad, StartsInTheVeryNextFrameAndThenOncePerPeriod) {
    changed(27);
    EXPECT_TRUE(loadsAt(1'000'000));
    EXPECT_FALSE(loadsAt(1'000'001));
    EXPECT_FALSE(loadsAt(1'010'000));  // the period has not passed yet
    EXPECT_TRUE(loadsAt(1'010'000.5));
    EXPECT_FALSE(loadsAt(1'020'000));
    EXPECT_TRUE(loadsAt(1'020'001));
}

TEST_F(AutomaticLoad, StartsAtOnceEvenWhenTheClockHasJustBegun) {
    changed(27);
    EXPECT_TRUE(loadsAt(1));
    EXPECT_FALSE(loadsAt(2));
}

TEST_F(AutomaticLoad, SwitchedOnAgainLoadsInTheNextFrameNotOnePeriodLater) {
    EXPECT_TRUE(loadsAt(1'000'000));
    params().autoLoad = 0;
    changed(27);
    EXPECT_FALSE(loadsAt(1'000'100));
    params().autoLoad = 1;
    changed(27);
    EXPECT_TRUE(loadsAt(1'000'200));
}

TEST_F(AutomaticLoad, AChangedPeriodLoadsInTheNextFrame) {
    EXPECT_TRUE(loadsAt(1'000'000));
    params().autoLoadInterval = 60.0F;
    changed(28);
    EXPECT_TRUE(loadsAt(1'000'020));
    EXPECT_FALSE(loadsAt(1'059'000));
    EXPECT_TRUE(loadsAt(1'060'021));
}

TEST_F(AutomaticLoad, SwitchedOffNeverLoads) {
    params().autoLoad = 0;
    EXPECT_FALSE(loadsAt(1'000'000));
    EXPECT_FALSE(loadsAt(9'000'000));
}

TEST_F(AutomaticLoad, APeriodOfAThousandthOfASecondOrLessNeverLoads) {
    for (const float period : {0.001F, 0.0005F, 0.0F, -1.0F, std::nanf("")}) {
        params().autoLoadInterval = period;
        changed(28);
        EXPECT_FALSE(loadsAt(1'000'000)) << period;
        EXPECT_FALSE(loadsAt(9'000'000)) << period;
    }
    params().autoLoadInterval = 0.0011F;
    EXPECT_TRUE(loadsAt(9'000'001));
}

TEST_F(AutomaticLoad, ThePeriodIsComputedInSinglePrecision) {
    params().autoLoadInterval = 4321.123F;
    EXPECT_TRUE(loadsAt(1'000'000));
    const double period = static_cast<double>(4321.123F * 1000.0F);
    EXPECT_NE(period, static_cast<double>(4321.123F) * 1000.0);
    EXPECT_FALSE(loadsAt(1'000'000 + period));
    EXPECT_TRUE(loadsAt(1'000'000 + period + 0.001));
}

TEST_F(AutomaticLoad, ALoadByHandDoesNotPutItOff) {
    EXPECT_TRUE(loadsAt(1'000'000));
    pressLoad();
    host.takeCalls();
    platform.threads.step();
    EXPECT_TRUE(loadsAt(1'010'001));
}

TEST_F(AutomaticLoad, ComesAfterTheDeliveryOfAnAnswer) {
    pressLoad();
    platform.threads.step();
    host.takeCalls();
    Calls expected = success;
    expected.push_back("_api__global_get_font_encoding()");
    EXPECT_EQ(nextFrame(), expected);
}

}  // namespace
}  // namespace intake
