// The host's side of the contract, seen through a plugin that knows only the host's headers.

#include "workbench/lumo/Plugin.h"

#include <gtest/gtest.h>

#include "workbench/lumo/Instance.h"

using lumo::Host;
using lumo::Instance;
using lumo::ParameterKind;
using lumo::Plugin;

namespace {

struct Probe : testing::Test {
    Host host;
    Plugin plugin{PROBE_PLUGIN};

    std::string echo() { return host.store.core().find("echo")->value().text(); }
};

}  // namespace

TEST_F(Probe, RegistersItsIdentity) {
    EXPECT_EQ(host.parameters.identity.name, "Probe");
    EXPECT_EQ(host.parameters.identity.folder, "Tests");
    EXPECT_EQ(host.parameters.identity.type, 2);
    EXPECT_EQ(host.parameters.identity.libraryVersion, "2.13.6");
    EXPECT_EQ(host.parameters.identity.info, "A \"probe\"\n");
}

TEST_F(Probe, RegistersItsParametersInOrderCountedFromOne) {
    ASSERT_EQ(host.parameters.size(), 10);
    EXPECT_EQ(host.parameters.find("count"), 1);
    EXPECT_EQ(host.parameters.find("notes"), 7);
    EXPECT_EQ(host.parameters.at(8).kind, ParameterKind::UserData);
    EXPECT_EQ(host.parameters.find("go"), 9);
    EXPECT_EQ(host.parameters.find("last"), 10);
    EXPECT_EQ(host.parameters.find("absent"), std::nullopt);
}

TEST_F(Probe, HidesOnlyTheParameterThatWasRegisteredLast) {
    EXPECT_TRUE(host.parameters.at(1).hidden);
    EXPECT_FALSE(host.parameters.at(2).hidden);
}

TEST_F(Probe, StoresWithTheSceneWhatWasRegisteredAsPersistent) {
    EXPECT_TRUE(host.parameters.at(8).persistent);
    EXPECT_FALSE(host.parameters.at(9).persistent);
}

TEST_F(Probe, FindsTheDefaultsInAFreshRecord) {
    Instance instance(host, plugin, "probe");
    instance.create();
    EXPECT_EQ(echo(), "new 3|none|1|0.500000||1|two\nlines|null|-1");
}

TEST_F(Probe, FindsTheValuesThatTheHostWrote) {
    Instance instance(host, plugin, "probe");
    instance.record().setInteger(1, 9);
    instance.record().setText(2, "seven..");
    instance.record().setInteger(3, 0);
    instance.record().setNumber(4, 1.25F);
    instance.record().setText(5, "box");
    instance.record().setInteger(6, 0);
    instance.record().setText(7, "");
    instance.record().setInteger(10, 5);
    instance.load();
    EXPECT_EQ(echo(), "load 9|seven..|0|1.250000|box|0||set|5");
}

TEST_F(Probe, ChangesItsRecordUnderTheHostsEyes) {
    Instance instance(host, plugin, "probe");
    instance.execAction(8);
    EXPECT_EQ(echo(), "action 8");
    EXPECT_EQ(instance.record().integer(1), 8);
    EXPECT_EQ(instance.record().text(2), "None");
}

TEST_F(Probe, IsToldTheHostIndexOfAChangedParameter) {
    Instance instance(host, plugin, "probe");
    instance.changed(7);
    EXPECT_EQ(echo(), "changed 7 3|none|1|0.500000||1|two\nlines|null|-1");
}

TEST_F(Probe, RunsInTheContainerOfItsInstance) {
    Instance first(host, plugin, "first");
    Instance second(host, plugin, "second");
    first.execPerField();
    const std::string inFirst = echo();
    second.execPerField();
    EXPECT_EQ(inFirst, "field in " + std::to_string(host.objects.find("first", host.scene)) +
                           " of " + std::to_string(host.scene));
    EXPECT_EQ(echo(), "field in " + std::to_string(host.objects.find("second", host.scene)) +
                          " of " + std::to_string(host.scene));
    EXPECT_NE(inFirst, echo());
}

TEST_F(Probe, GetsCodeDataAndOutPointerOfADispatch) {
    Instance instance(host, plugin, "probe");
    char data[] = "field";
    void* out = nullptr;
    instance.dispatch(0x4649454C, data, &out);
    EXPECT_EQ(echo(), "dispatch 1179206988 field");
    EXPECT_EQ(out, instance.record().data());
}

TEST_F(Probe, IsToldOfGeometryAndOfTheEndOfLoading) {
    Instance instance(host, plugin, "probe");
    instance.newGeometry(4);
    EXPECT_EQ(echo(), "geometry 4");
    instance.afterLoad();
    EXPECT_EQ(echo(), "after load");
}

TEST_F(Probe, IsCleanedUpWithItsInstance) {
    { const Instance instance(host, plugin, "probe"); }
    EXPECT_EQ(echo(), "cleanup");
}

TEST_F(Probe, ShowsAndHidesParametersInTheEditor) {
    Instance instance(host, plugin, "probe");
    EXPECT_TRUE(host.editor.isShown("ratio"));
    instance.guiStatus();
    EXPECT_FALSE(host.editor.isShown("ratio"));
    EXPECT_TRUE(host.editor.isShown("title"));
    EXPECT_TRUE(host.editor.isShown("notes"));
    EXPECT_EQ(host.editor.refreshes(), 1);
}

TEST(ProbeTrace, WritesEveryCallAsItWouldStandInSource) {
    Host host;
    host.trace.start();
    const Plugin plugin{PROBE_PLUGIN};
    EXPECT_EQ(host.trace.text(), R"(evSetPersistent(1)
evRegisterPlugin("Probe")
evRegisterPluginFolder("Tests")
evRegisterPluginType(2)
evRegisterPluginVersion(2, 13, 6)
evRegisterInfoText("info", "A \"probe\"\n")
evRegisterParameterInt("count", "Count", 3, 1, 9)
evHideParameter()
evRegisterParameterString("title", "Title", "none", 80, 8, 0)
evRegisterParameterBool("flag", "Flag", 1)
evRegisterParameterFloat("ratio", "Ratio", 0.5, 0, 2)
evRegisterParameterContainer("where", "Where", "")
evRegisterParameterRadio("choice", "Choice: ", 1, {" One ", "Two"})
evRegisterParameterText("notes", "two\nlines", 800, 300)
evRegisterUserData32(8)
evSetPersistent(0)
evRegisterPushButton("go", "Go", 7)
evRegisterParameterInt("last", "Last", -1, -5, 5)
)");
}

TEST(Plugin, ThatCannotBeFoundIsAnErrorThatNamesTheFile) {
    const Host host;
    try {
        const Plugin plugin("/nowhere/Absent.so");
        FAIL() << "loaded a library that is not there";
    } catch (const std::runtime_error& error) {
        const std::string message = error.what();
        EXPECT_TRUE(message.starts_with("Could not load the plugin /nowhere/Absent.so: "))
            << message;
    }
}

TEST(Plugin, ThatRegistersNothingIsAnErrorThatNamesTheFile) {
    const Host host;
    try {
        const Plugin plugin(SILENT_PLUGIN);
        FAIL() << "accepted a plugin without parameters";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()),
                  std::string("The plugin ") + SILENT_PLUGIN + " has registered no parameters");
    }
}

TEST(Plugin, WithoutAnEntryPointIsAnErrorThatNamesIt) {
    const Host host;
    try {
        const Plugin plugin(EMPTY_PLUGIN);
        FAIL() << "accepted a library that is no plugin";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()), std::string(EMPTY_PLUGIN) +
                                                 " is no plugin: it does not export "
                                                 "PLUGIN_INIT_FUNCTION");
    }
}
