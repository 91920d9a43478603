#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

using Bind = PluginTest;

TEST_F(Bind, MakesAnInstanceAndBindsItStepByStep) {
    record->Magic = 0;
    TestRecord::set(record->FieldName, "Results");
    TestRecord::set(params().postAction, "Go=1;");
    PLUGIN_LOAD(record.get());
    EXPECT_EQ(
        host.takeCalls(),
        Calls({"IDataHandler()", "DataExpression()", "setVariableQuery(query)",  //
               "DataDebug(3)", "setLocalContainer()", "setLocalScene()", "init(42)",
               // initialize
               "setVariableQuery(query)", "setHostField(store, field)", R"(parse("Go=1;"))",
               // the binding parameters
               "setNotifyOnValueChange(0)", "setUseConvTable(0)", R"(RegisterField("Results", 0))",
               // syncParameters
               "setHostField(store, field)", R"(parse("Go=1;"))",  //
               "setInitCB(1)"}));
    EXPECT_EQ(record->Magic, 9473);
    ASSERT_NE(record->instance, nullptr);
    EXPECT_EQ(record->instance->params, &record->params);
    EXPECT_EQ(record->instance->container, 42);
    EXPECT_EQ(record->instance->scene, 5);
}

TEST_F(Bind, KeepsAnInstanceThatExistsAndGivesItAFreshWorker) {
    Intake* const instance = &bindInstance();
    const int before = platform.threads.started;
    PLUGIN_LOAD(record.get());
    EXPECT_EQ(record->instance, instance);
    EXPECT_EQ(platform.threads.started, before + 1);
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 1U);
    EXPECT_EQ(host.takeCalls(),
              Calls({"DataDebug(3)", "setLocalContainer()", "setLocalScene()", "init(42)",
                     "setVariableQuery(query)", "setHostField(store, field)", R"(parse(""))",
                     "setNotifyOnValueChange(0)", "setUseConvTable(0)", R"(RegisterField("", 0))",
                     "setHostField(store, field)", R"(parse(""))", "setInitCB(1)"}));
}

TEST_F(Bind, AnInstanceThatCannotBeMadeLeavesTheRecordWithoutOneAndTheInitialisationPending) {
    platform.threads.refuses = true;
    PLUGIN_LOAD(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(record->Magic, 9473);
    const Calls calls = host.takeCalls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0], "IDataHandler()");
    EXPECT_EQ(calls[1], "~IDataHandler()");
    EXPECT_TRUE(calls[2].starts_with("_lumoprintf(\"Intake: no instance could be made: "))
        << calls[2];
    EXPECT_EQ(calls[3], "setInitCB(1)");
}

TEST_F(Bind, WithoutAThreadForAFreshWorkerKeepsTheOldOneAndIsReported) {
    Intake* const instance = &bindInstance();
    platform.threads.refuses = true;
    PLUGIN_LOAD(record.get());
    EXPECT_EQ(record->instance, instance);
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 1U);
    const Calls calls = host.takeCalls();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[calls.size() - 2], "setInitCB(1)");
    EXPECT_TRUE(calls.back().starts_with("_lumoprintf(\"Intake: PLUGIN_LOAD failed: "))
        << calls.back();
}

TEST_F(Bind, AFreshInstanceHasAVerticalBarAsDelimiterAndAfterBindingAsRowsDelimiterToo) {
    EXPECT_STREQ(params().delimiter, "|");
    EXPECT_STREQ(params().rowsDelimiter, "");
    bindInstance();
    EXPECT_STREQ(params().delimiter, "|");
    EXPECT_STREQ(params().rowsDelimiter, "|");
}

TEST_F(Bind, ARowsDelimiterOfTheUsersOwnStays) {
    TestRecord::set(params().rowsDelimiter, "#");
    bindInstance();
    EXPECT_STREQ(params().rowsDelimiter, "#");
}

TEST_F(Bind, TheLongestDelimiterBecomesTheRowsDelimiterWhole) {
    const std::string longest(79, 'd');
    TestRecord::set(params().delimiter, longest);
    bindInstance();
    EXPECT_EQ(params().rowsDelimiter, longest);
}

TEST_F(Bind, InSharedMemoryModeBindsTheSharedMemoryAfterTheExpression) {
    params().mode = 4;
    PLUGIN_LOAD(record.get());
    const Calls calls = host.takeCalls();
    ASSERT_GE(calls.size(), 15U);
    EXPECT_EQ(Calls(calls.begin() + 7, calls.begin() + 15),
              Calls({"setVariableQuery(query)", "setHostField(store, field)", R"(parse(""))",
                     "_api__get_sceneid_local()", "_api__scene_get_shared_script_memory(5)",
                     R"(_api__shared_script_memory_has_key(101, "VAR"))",
                     R"(_api__shared_script_memory_create_key(101, "VAR"))",
                     R"(_api__shared_script_memory_has_key(101, "VAR"))"}));
}

/// How the container parameters of a record reach the handler.
struct ContainerCase {
    const char* name;
    int32_t isRemote, isOther, whichOther;
    int32_t otherAfter, whichAfter, handlerWhich;
    bool remote;
};

class Container : public PluginTest, public testing::WithParamInterface<ContainerCase> {
protected:
    void SetUp() override {
        record->IsRemote = GetParam().isRemote;
        record->IsOther = GetParam().isOther;
        record->WhichOther = GetParam().whichOther;
        TestRecord::set(record->RemoteContainer, "Stage$Board");
    }

    void expectApplied() {
        EXPECT_EQ(record->IsOther, GetParam().otherAfter);
        EXPECT_EQ(record->WhichOther, GetParam().whichAfter);
        EXPECT_EQ(record->instance->IsOther, GetParam().otherAfter);
        EXPECT_EQ(record->instance->WhichOther, GetParam().handlerWhich);
        const Calls calls = host.takeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), R"(setRemoteContainer("Stage$Board"))"),
                  GetParam().remote ? 1 : 0);
    }
};

TEST_P(Container, IsTakenFromTheRecordByBind) {
    PLUGIN_LOAD(record.get());
    expectApplied();
}

TEST_P(Container, IsTakenFromTheRecordByCreateAndRegister) {
    record->Magic = 1;
    PLUGIN_GUI_STATUS(record.get());
    expectApplied();
}

INSTANTIATE_TEST_SUITE_P(
    Binding, Container,
    testing::Values(ContainerCase{"OwnContainer", 0, 0, 0, 0, 0, 0, false},
                    ContainerCase{"OwnContainerDespiteAChoice", 0, 0, 3, 0, 3, 0, false},
                    ContainerCase{"Parent", 0, 1, 0, 1, 0, 0, false},
                    ContainerCase{"GrandParent", 0, 1, 1, 1, 1, 1, false},
                    ContainerCase{"GreatGrandParent", 0, 1, 2, 1, 2, 2, false},
                    ContainerCase{"OtherRemote", 0, 1, 3, 1, 3, 3, true},
                    ContainerCase{"RemoteSwitch", 1, 0, 0, 1, 3, 3, true},
                    ContainerCase{"RemoteSwitchOverParent", 1, 1, 1, 1, 3, 3, true}),
    [](const auto& each) { return each.param.name; });

TEST_F(Bind, PassesNotificationAndConversionTableOn) {
    record->ValChangeNotify = 1;
    record->UseConvTable = 1;
    TestRecord::set(record->ConvTableName, "Teams");
    PLUGIN_LOAD(record.get());
    const Calls calls = host.takeCalls();
    ASSERT_GE(calls.size(), 14U);
    EXPECT_EQ(Calls(calls.begin() + 10, calls.begin() + 14),
              Calls({"setNotifyOnValueChange(1)", "setUseConvTable(1)",
                     R"(setConvTableNmae("Teams"))", R"(RegisterField("", 0))"}));
}

TEST_F(Bind, PassesTheRemoteContainerOnBeforeTheNotification) {
    record->IsRemote = 1;
    TestRecord::set(record->RemoteContainer, "Stage$Board");
    PLUGIN_LOAD(record.get());
    const Calls calls = host.takeCalls();
    ASSERT_GE(calls.size(), 12U);
    EXPECT_EQ(Calls(calls.begin() + 10, calls.begin() + 12),
              Calls({R"(setRemoteContainer("Stage$Board"))", "setNotifyOnValueChange(0)"}));
}

using Cleanup = PluginTest;

TEST_F(Cleanup, DeletesTheInstanceOfABoundRecord) {
    bindInstance();
    PLUGIN_CLEANUP_FUNCTION(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(record->Magic, 9473);
    EXPECT_EQ(host.takeCalls(), Calls({"setVariableQuery(null)", "~IDataHandler()"}));
}

/// What an instance was shown when it was asked to clean up.
class CleanedUpIntake : public Intake {
public:
    explicit CleanedUpIntake(Calls& calls, void*& shown) : calls_(calls), shown_(shown) {}
    void cleanup() override {
        calls_.push_back("cleanup()");
        shown_ = params;
    }

private:
    Calls& calls_;
    void*& shown_;
};

TEST_F(Cleanup, AsksTheInstanceWithItsParametersBeforeItIsDeleted) {
    void* shown = nullptr;
    record->instance = new CleanedUpIntake(host.calls, shown);
    host.takeCalls();
    PLUGIN_CLEANUP_FUNCTION(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"cleanup()", "setVariableQuery(null)", "~IDataHandler()"}));
    EXPECT_EQ(shown, &record->params);
}

TEST_F(Cleanup, LeavesARecordAloneThatIsNotBound) {
    Intake* const instance = &bindInstance();
    for (const int32_t magic : {0, 1, 2, 9472}) {
        record->Magic = magic;
        PLUGIN_CLEANUP_FUNCTION(record.get());
        EXPECT_EQ(record->instance, instance) << magic;
    }
    EXPECT_EQ(host.takeCalls(), Calls());
}

TEST_F(Cleanup, DoesNothingWithoutAnInstance) {
    PLUGIN_CLEANUP_FUNCTION(record.get());
    EXPECT_EQ(host.takeCalls(), Calls());
}

TEST_F(Cleanup, EndsTheWorkerAndKeepsTheExpression) {
    bindInstance();
    PLUGIN_CLEANUP_FUNCTION(record.get());
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 0U);
    EXPECT_EQ(host.expressionsMade, 1);
    EXPECT_EQ(host.expressionsGone, 0);
}

using AfterLoad = PluginTest;

TEST_F(AfterLoad, CarriesOutAPendingInitialisationOnce) {
    bindInstance();
    host.initPending = 1;
    PLUGIN_AFTER_LOAD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()", "initCobalt()", "setInitCB(0)"}));
    PLUGIN_AFTER_LOAD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));
}

TEST_F(AfterLoad, WithoutAnInstanceLeavesTheInitialisationPending) {
    host.initPending = 1;
    PLUGIN_AFTER_LOAD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));
    EXPECT_EQ(host.initPending, 1);
}

/// A plugin of the library's own kind.
class TypeOneIntake : public Intake {
public:
    int32_t getType() override { return 1; }
};

TEST_F(AfterLoad, WithAnInstanceOfTypeOneLeavesTheInitialisationPending) {
    record->instance = new TypeOneIntake;
    host.takeCalls();
    host.initPending = 1;
    PLUGIN_AFTER_LOAD(record.get());
    EXPECT_EQ(host.takeCalls(), Calls({"getInitCB()"}));
    EXPECT_EQ(host.initPending, 1);
}

TEST_F(AfterLoad, DoesNotCheckTheState) {
    record->Magic = 1;
    PLUGIN_AFTER_LOAD(record.get());
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(record->Magic, 1);
}

}  // namespace
}  // namespace intake
