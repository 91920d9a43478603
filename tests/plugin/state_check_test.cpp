#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

using StateCheck = PluginTest;

// What Create-and-register does up to and with the binding of the field.
const Calls CREATED{"IDataHandler()", "DataExpression()",          "setVariableQuery(query)",
                    "DataDebug(1)",   "setLocalContainer()",       "setLocalScene()",
                    "init(42)",       "setNotifyOnValueChange(0)", "setUseConvTable(0)"};

// initialize, then the scene's function for the store.
const Calls INITIALISED{"setVariableQuery(query)", "setHostField(store, field)", R"(parse(""))",
                        R"(_api__get_scene_function(5, "Cobalt"))", "_api__object_valid(77)"};

Calls joined(std::initializer_list<Calls> lists) {
    Calls all;
    for (const Calls& list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

TEST_F(StateCheck, AFreshRecordGetsAnInstanceThatIsRegisteredWithFlagOne) {
    PLUGIN_INIT_FUNCTION(record.get());
    EXPECT_EQ(record->Magic, 1);
    PLUGIN_NEW_GEOM(record.get(), 6);
    EXPECT_EQ(host.takeCalls(),
              joined({CREATED, {R"(Register("", 1))"}, INITIALISED, {"onBuildGeometry(6)"}}));
    EXPECT_EQ(record->Magic, 9473);
    ASSERT_NE(record->instance, nullptr);
    EXPECT_EQ(record->instance->params, &record->params);
}

TEST_F(StateCheck, ARecordToBeMadeAgainGetsAnInstanceWithFlagZeroAndIsSynchronised) {
    record->Magic = 2;
    TestRecord::set(record->FieldName, "Results");
    PLUGIN_NEW_GEOM(record.get(), 6);
    EXPECT_EQ(host.takeCalls(),
              joined({CREATED,
                      {R"(Register("Results", 0))"},
                      INITIALISED,
                      {"setHostField(store, field)", R"(parse(""))", "onBuildGeometry(6)"}}));
    EXPECT_EQ(record->Magic, 9473);
}

TEST_F(StateCheck, MakesANewInstanceEvenWhereOneExistsAndDoesNotDeleteTheOldOne) {
    Intake* const old = &bindInstance();
    record->Magic = 2;
    PLUGIN_NEW_GEOM(record.get(), 0);
    EXPECT_NE(record->instance, old);
    const Calls calls = host.takeCalls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "IDataHandler()"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "~IDataHandler()"), 0);
    delete old;
}

TEST_F(StateCheck, ABoundRecordIsLeftAsItIs) {
    bindInstance();
    PLUGIN_NEW_GEOM(record.get(), 3);
    EXPECT_EQ(host.takeCalls(), Calls({"onBuildGeometry(3)"}));
}

TEST_F(StateCheck, ARecordInAnyOtherStateIsNeverBound) {
    for (const int32_t magic : {0, 3, -1, 9472, 9474}) {
        record->Magic = magic;
        PLUGIN_EXEC_PER_FIELD(record.get());
        PLUGIN_CHANGED_CALLBACK(record.get(), 2);
        PLUGIN_GUI_STATUS(record.get());
        PLUGIN_NEW_GEOM(record.get(), 0);
        EXPECT_EQ(record->instance, nullptr);
        EXPECT_EQ(record->Magic, magic);
    }
}

TEST_F(StateCheck, AMissingStoreFunctionIsAddedToTheScene) {
    host.invalidObjects = {77};
    record->Magic = 1;
    PLUGIN_NEW_GEOM(record.get(), 0);
    const Calls calls = host.takeCalls();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(Calls(calls.end() - 4, calls.end()),
              Calls({R"(_api__get_scene_function(5, "Cobalt"))", "_api__object_valid(77)",
                     R"(_api__scene_create_function(5, "BUILT_IN*FUNCTION*Cobalt"))",
                     "onBuildGeometry(0)"}));
}

TEST_F(StateCheck, LeavesThePendingInitialisationAsItIs) {
    record->Magic = 1;
    PLUGIN_NEW_GEOM(record.get(), 0);
    EXPECT_EQ(host.initPending, 0);
}

TEST_F(StateCheck, AnInstanceThatCannotBeMadeIsNotTriedAgain) {
    platform.threads.refuses = true;
    for (const int32_t magic : {1, 2}) {
        record->Magic = magic;
        PLUGIN_NEW_GEOM(record.get(), 0);
        EXPECT_EQ(record->instance, nullptr);
        EXPECT_EQ(record->Magic, 9473);
    }
}

/// Which entry points check the state first.
struct EntryPoint {
    const char* name;
    void (*call)(HostRecord*);
    bool checks;
};

class EntryPoints : public PluginTest, public testing::WithParamInterface<EntryPoint> {};

TEST_P(EntryPoints, CheckTheStateOrNot) {
    record->Magic = 1;
    GetParam().call(record.get());
    EXPECT_EQ(record->instance != nullptr, GetParam().checks);
    EXPECT_EQ(record->Magic, GetParam().checks ? 9473 : 1);
}

TEST_P(EntryPoints, ShowTheInstanceTheRecordThatTheyWereGiven) {
    Intake& instance = bindInstance();
    instance.params = nullptr;
    GetParam().call(record.get());
    EXPECT_EQ(instance.params, &record->params);
}

INSTANTIATE_TEST_SUITE_P(
    All, EntryPoints,
    testing::Values(
        EntryPoint{"ExecAction", [](HostRecord* r) { PLUGIN_EXEC_ACTION(r, 1); }, false},
        EntryPoint{"ExecPerField", [](HostRecord* r) { PLUGIN_EXEC_PER_FIELD(r); }, true},
        EntryPoint{"Dispatcher",
                   [](HostRecord* r) { PLUGIN_DISPATCHER_CALLBACK(r, 1, nullptr, nullptr); },
                   false},
        EntryPoint{"BindingParameterChanged", [](HostRecord* r) { PLUGIN_CHANGED_CALLBACK(r, 2); },
                   true},
        EntryPoint{"ReaderParameterChanged", [](HostRecord* r) { PLUGIN_CHANGED_CALLBACK(r, 11); },
                   true},
        EntryPoint{"GuiStatus", [](HostRecord* r) { PLUGIN_GUI_STATUS(r); }, true},
        EntryPoint{"NewGeom", [](HostRecord* r) { PLUGIN_NEW_GEOM(r, 0); }, true}),
    [](const auto& each) { return each.param.name; });

TEST_F(StateCheck, RunsBeforeThePendingInitialisationInThePerFieldHook) {
    record->Magic = 1;
    host.initPending = 1;
    PLUGIN_EXEC_PER_FIELD(record.get());
    EXPECT_EQ(host.takeCalls(), joined({CREATED,
                                        {R"(Register("", 1))"},
                                        INITIALISED,
                                        {"getInitCB()", "initCobalt()", "setInitCB(0)"}}));
}

TEST_F(StateCheck, InitFunctionMarksTheRecordAsCreatedWithoutAnInstance) {
    Intake* const instance = &bindInstance();
    PLUGIN_INIT_FUNCTION(record.get());
    EXPECT_EQ(record->Magic, 1);
    EXPECT_EQ(record->instance, nullptr);
    EXPECT_EQ(host.takeCalls(), Calls());
    delete instance;
}

}  // namespace
}  // namespace intake
