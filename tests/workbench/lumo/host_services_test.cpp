// The services of host/lumo.h, called as a plugin calls them.

#include <gtest/gtest.h>

#include "host/lumo.h"
#include "workbench/lumo/Host.h"
#include "workbench/lumo/Record.h"

using lumo::Host;

namespace {

struct HostServices : testing::Test {
    Host host;
};

}  // namespace

TEST_F(HostServices, AnObjectIsValidOnlyWhenItExists) {
    EXPECT_EQ(_api__object_valid(host.scene), 1);
    EXPECT_EQ(_api__object_valid(-1), 0);
    EXPECT_EQ(_api__object_valid(0), 0);
    EXPECT_EQ(_api__object_valid(1000), 0);
}

TEST_F(HostServices, ASceneHasTheFunctionsThatWereCreatedInIt) {
    const int32_t scene = _api__get_sceneid_local();
    EXPECT_EQ(_api__object_valid(_api__get_scene_function(scene, "Cobalt")), 0);
    const int32_t made = _api__scene_create_function(scene, "BUILT_IN*FUNCTION*Cobalt");
    EXPECT_EQ(_api__get_scene_function(scene, "Cobalt"), made);
    EXPECT_EQ(_api__object_valid(made), 1);
}

TEST_F(HostServices, NoFunctionIsCreatedInASceneThatDoesNotExist) {
    EXPECT_EQ(_api__scene_create_function(99, "BUILT_IN*FUNCTION*Cobalt"), -1);
}

TEST_F(HostServices, ASharedMemoryHoldsTheValuesOfTheKeysThatWereCreated) {
    const int32_t memory = _api__scene_get_shared_script_memory(host.scene);
    EXPECT_EQ(_api__shared_script_memory_has_key(memory, "VAR"), 0);
    _api__shared_script_memory_create_key(memory, "VAR");
    EXPECT_EQ(_api__shared_script_memory_has_key(memory, "VAR"), 1);
    const LumoVariant value{LumoVariant::TEXT, "one;two"};
    _api__shared_script_memory_set_value(memory, "VAR", &value);
    EXPECT_EQ(*host.memories.scene.find("VAR"), "one;two");
}

TEST_F(HostServices, AValueWithoutItsKeyIsNotStored) {
    const LumoVariant value{LumoVariant::TEXT, "lost"};
    _api__shared_script_memory_set_value(_api__global_get_shared_script_memory(), "VAR", &value);
    EXPECT_EQ(host.memories.global.find("VAR"), nullptr);
    EXPECT_EQ(host.memories.takeLastSet(), nullptr);
}

TEST_F(HostServices, TheThreeSharedMemoriesAreApart) {
    const int32_t scene = _api__scene_get_shared_script_memory(host.scene);
    const int32_t global = _api__global_get_shared_script_memory();
    const int32_t distributed = _api__global_get_distributed_shared_script_memory();
    _api__shared_script_memory_create_key(global, "VAR");
    EXPECT_EQ(_api__shared_script_memory_has_key(scene, "VAR"), 0);
    EXPECT_EQ(_api__shared_script_memory_has_key(distributed, "VAR"), 0);
    EXPECT_EQ(
        _api__object_valid(scene) + _api__object_valid(global) + _api__object_valid(distributed),
        3);
}

TEST_F(HostServices, AnotherScenesSharedMemoryIsNone) {
    EXPECT_EQ(_api__scene_get_shared_script_memory(99), -1);
}

TEST_F(HostServices, ACommandIsShownAndAnsweredWithNothing) {
    testing::internal::CaptureStderr();
    const char* answer = nullptr;
    EXPECT_EQ(_api__lumo_send_command("SCENE*play", &answer), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Host command: SCENE*play\n");
    EXPECT_STREQ(answer, "");
}

TEST_F(HostServices, TheConsoleIsStandardErrorAndTakesPrintfsFormats) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(_lumoprintf("%d rows of %s\n", 3, "Table"), 16);
    EXPECT_EQ(_lumowprintf(L"%d gr\u00fcn\n", 4), 8);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "3 rows of Table\n4 gr\xC3\xBCn\n");
}

TEST_F(HostServices, ATextsBufferHoldsItsDefaultAtLeast) {
    evRegisterParameterString("name", "Name", "default", 80, 4, 0);
    const lumo::Record record(host.parameters);
    EXPECT_EQ(record.text(1), "default");
}

TEST_F(HostServices, TheFontEncodingIsTheHostsSetting) {
    EXPECT_EQ(_api__global_get_font_encoding(), 1);
    host.fontEncoding = 0;
    EXPECT_EQ(_api__global_get_font_encoding(), 0);
}

TEST_F(HostServices, ATraceThatWasNotStartedStaysEmpty) {
    _api__get_sceneid_local();
    EXPECT_EQ(host.trace.text(), "");
}

TEST_F(HostServices, TheTraceEscapesQuotesBackslashesAndLineEnds) {
    host.trace.start();
    _api__get_scene_function(1, "a\"b\\c\r\n\td");
    EXPECT_EQ(host.trace.text(), "_api__get_scene_function(1, \"a\\\"b\\\\c\\r\\n\\td\")\n");
}
