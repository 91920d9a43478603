#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

// What an answer sets off can lead the host back into the plugin, in the middle of the delivery.

class ReEntry : public PluginTest {
protected:
    void SetUp() override {
        params().queryMode = 3;
        params().show_data = 1;
        TestRecord::set(params().filename, "price.json");
        platform.files.put("price.json", R"({"price": 7.5})");
        host.store.add("READER_CONSOLE");
        bindInstance();
    }

    /// Leaves that many answers waiting.
    void load(int times) {
        for (int each = 0; each < times; ++each) {
            PLUGIN_EXEC_ACTION(record.get(), 0);
        }
        for (int each = 0; each < times; ++each) {
            platform.threads.step();
        }
        host.takeCalls();
    }

    int64_t scriptsIn(const Calls& calls) {
        return std::count(calls.begin(), calls.end(),
                          R"(store.executeScript("Table={price=7.5;};", 0))");
    }
};

/// A host call in the middle of a delivery.
class ReEntryFrom : public ReEntry, public testing::WithParamInterface<const char*> {};

TEST_P(ReEntryFrom, DeletingTheInstanceEndsTheDeliveryThere) {
    params().autoLoad = 1;
    load(2);
    host.onCall(GetParam(), [&] { PLUGIN_CLEANUP_FUNCTION(record.get()); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(host.takeCalls().back(), "~IDataHandler()");
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));
}

TEST_P(ReEntryFrom, MakingTheInstanceAnewGoesOnWithTheNewOne) {
    load(1);
    host.onNextCall(GetParam(), [&] {
        PLUGIN_CLEANUP_FUNCTION(record.get());
        PLUGIN_LOAD(record.get());
        host.initPending = 0;
    });
    PLUGIN_EXEC_PER_FIELD(record.get());
    ASSERT_NE(record->instance, nullptr);
    EXPECT_EQ(host.takeCalls().back(), "setInitCB(1)");
    load(1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

TEST_P(ReEntryFrom, BindingTheInstanceAgainFinishesTheDeliveryAndDropsTheOldWorker) {
    load(2);
    host.onNextCall(GetParam(), [&] {
        PLUGIN_LOAD(record.get());
        host.initPending = 0;
    });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 0);
    load(1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

TEST_P(ReEntryFrom, TheNextFrameBringsTheNextAnswerInsideTheFirst) {
    load(3);
    host.onNextCall(GetParam(), [&] { PLUGIN_EXEC_PER_FIELD(record.get()); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 2);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

TEST_P(ReEntryFrom, EndingTheWorkerFinishesTheDelivery) {
    load(2);
    host.onNextCall(GetParam(), [&] { PLUGIN_EXEC_ACTION(record.get(), 2); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

TEST_P(ReEntryFrom, ANewLoadIsAnsweredLater) {
    load(1);
    host.onNextCall(GetParam(), [&] { PLUGIN_EXEC_ACTION(record.get(), 0); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
    platform.threads.step();
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

INSTANTIATE_TEST_SUITE_P(HostCalls, ReEntryFrom,
                         testing::Values("setValue", "executeScript", "executeExtended"),
                         [](const auto& each) { return std::string(each.param); });

TEST_F(ReEntry, DeletingTheInstanceWhileSharedMemoryIsWrittenEndsTheDeliveryThere) {
    params().mode = 4;
    PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 19);
    load(1);
    host.onCall("_api__shared_script_memory_set_value",
                [&] { PLUGIN_CLEANUP_FUNCTION(record.get()); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls().back(), "~IDataHandler()");
}

TEST_F(ReEntry, AnotherNameThatIsChosenWhileAVariableIsMadeDoesNotChangeItsName) {
    const auto choose = [&](const char* name) {
        TestRecord::set(params().shmvar, name);
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 19);
    };
    host.onNextCall("_api__shared_script_memory_create_key", [&] { choose("SECOND"); });
    choose("FIRST");
    const std::map<std::string, std::string> both{{"FIRST", ""}, {"SECOND", ""}};
    EXPECT_EQ(host.sharedMemories[host.sceneMemory], both);
}

TEST_F(ReEntry, AChangedPostUpdateActionRunsAlreadyForTheAnswerThatChangedIt) {
    load(1);
    host.onNextCall("executeScript", [&] {
        TestRecord::set(params().postAction, "New=1;");
        PLUGIN_CHANGED_CALLBACK(record.get(), 11 + 17);
    });
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls().back(),
              R"("New=1;".executeExtended(sceneStore, _api__lumo_send_command, 0))");
}

/// Any other call that the plugin makes, and the entry point that makes it.
struct CallWithin {
    const char* hostCall;
    void (*enter)(HostRecord* record);
};

class DeletingTheInstanceWithin : public ReEntry, public testing::WithParamInterface<CallWithin> {};

void load(HostRecord* record) {
    PLUGIN_LOAD(record);
}
void chooseField(HostRecord* record) {
    PLUGIN_CHANGED_CALLBACK(record, 2);
}
void changeNotification(HostRecord* record) {
    PLUGIN_CHANGED_CALLBACK(record, 3);
}
void startLoad(HostRecord* record) {
    PLUGIN_EXEC_ACTION(record, 0);
}
void finish(HostRecord* record) {
    PLUGIN_AFTER_LOAD(record);
}

TEST_P(DeletingTheInstanceWithin, EndsTheCallThere) {
    host.initPending = 1;
    host.takeCalls();
    host.onNextCall(GetParam().hostCall, [&] { PLUGIN_CLEANUP_FUNCTION(record.get()); });
    GetParam().enter(record.get());
    EXPECT_EQ(record->instance, nullptr);
    Calls calls = host.takeCalls();
    if (calls.back() == "setInitCB(1)") {  // whatever becomes of binding
        calls.pop_back();
    }
    EXPECT_EQ(calls.back(), "~IDataHandler()");
}

INSTANTIATE_TEST_SUITE_P(
    AnyHostCall, DeletingTheInstanceWithin,
    testing::Values(CallWithin{"DataDebug", load}, CallWithin{"setLocalContainer", load},
                    CallWithin{"setLocalScene", load}, CallWithin{"init", load},
                    CallWithin{"setVariableQuery", load}, CallWithin{"setHostField", load},
                    CallWithin{"parse", load}, CallWithin{"setNotifyOnValueChange", load},
                    CallWithin{"setUseConvTable", load}, CallWithin{"RegisterField", load},
                    CallWithin{"setInitCB", load}, CallWithin{"DataDebug", chooseField},
                    CallWithin{"Register", chooseField},
                    CallWithin{"setNotifyOnValueChange", changeNotification},
                    CallWithin{"_api__global_get_font_encoding", startLoad},
                    CallWithin{"initCobalt", finish}),
    [](const auto& each) {
        return std::to_string(each.index) + std::string(each.param.hostCall).substr(0, 1);
    });

class BindingTheInstanceAgainWithin : public ReEntry,
                                      public testing::WithParamInterface<CallWithin> {};

TEST_P(BindingTheInstanceAgainWithin, LeavesOneThatLoads) {
    host.onNextCall(GetParam().hostCall, [&] { PLUGIN_LOAD(record.get()); });
    GetParam().enter(record.get());
    host.initPending = 0;
    load(1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 0);
}

TEST_P(BindingTheInstanceAgainWithin, AfterItWasDeletedLeavesOneThatLoads) {
    host.takeCalls();
    host.onNextCall(GetParam().hostCall, [&] {
        PLUGIN_CLEANUP_FUNCTION(record.get());
        PLUGIN_LOAD(record.get());
    });
    GetParam().enter(record.get());
    ASSERT_NE(record->instance, nullptr);
    const Calls calls = host.takeCalls();
    EXPECT_EQ(calls.back(), "setInitCB(1)");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "IDataHandler()"), 1);
    host.initPending = 0;
    load(1);
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

INSTANTIATE_TEST_SUITE_P(HostCalls, BindingTheInstanceAgainWithin,
                         testing::Values(CallWithin{"Register", chooseField},
                                         CallWithin{"RegisterField", load}),
                         [](const auto& each) { return std::string(each.param.hostCall); });

TEST_F(ReEntry, BindingTheInstanceAgainWhileALoadIsStartedAsksTheNewWorker) {
    host.onNextCall("_api__global_get_font_encoding", [&] {
        PLUGIN_LOAD(record.get());
        host.initPending = 0;
    });
    PLUGIN_EXEC_ACTION(record.get(), 0);
    platform.threads.step();
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 1);
}

TEST_F(ReEntry, MakingTheInstanceAnewWhileALoadIsStartedDropsTheLoad) {
    host.onNextCall("_api__global_get_font_encoding", [&] {
        PLUGIN_CLEANUP_FUNCTION(record.get());
        PLUGIN_LOAD(record.get());
        host.initPending = 0;
    });
    PLUGIN_EXEC_ACTION(record.get(), 0);
    ASSERT_NE(record->instance, nullptr);
    EXPECT_EQ(host.takeCalls().back(), "setInitCB(1)");
    platform.threads.step();
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(scriptsIn(host.takeCalls()), 0);
}

TEST_F(ReEntry, AFrameWhileTheInstanceIsStillBeingMadeDoesNotMakeASecondOne) {
    PLUGIN_CLEANUP_FUNCTION(record.get());
    host.takeCalls();
    record->Magic = 1;
    host.onNextCall("Register", [&] { PLUGIN_EXEC_PER_FIELD(record.get()); });
    PLUGIN_EXEC_PER_FIELD(record.get());
    const Calls calls = host.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "IDataHandler()"), 1);
}

}  // namespace
}  // namespace intake
