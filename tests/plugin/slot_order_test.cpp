#include <cstring>

#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

// The data store's library calls an instance's operations by their place in the table of virtual
// functions. In the C++ ABI that we build for, a pointer to a virtual function holds one more than
// the byte offset of its place, and the destructor takes two places.

template <class Member>
ptrdiff_t placeOf(Member function) {
    static_assert(sizeof function == 2 * sizeof(ptrdiff_t));
    ptrdiff_t encoded = 0;
    std::memcpy(&encoded, &function, sizeof encoded);
    return (encoded - 1) / static_cast<ptrdiff_t>(sizeof(void*)) - 1;
}

using H = lumoDataHandler;

TEST(SlotOrder, IsTheOneThatTheLibraryCallsBy) {
    EXPECT_EQ(placeOf(&H::getName), 1);
    EXPECT_EQ(placeOf(&H::getFolder), 2);
    EXPECT_EQ(placeOf(&H::getType), 3);
    EXPECT_EQ(placeOf(&H::getVersion), 4);
    EXPECT_EQ(placeOf(&H::getFieldType), 5);
    EXPECT_EQ(placeOf(&H::getFlags), 6);
    EXPECT_EQ(placeOf(&H::getInfo), 7);
    EXPECT_EQ(placeOf(&H::registerParameters), 8);
    EXPECT_EQ(placeOf(&H::syncParameters), 9);
    EXPECT_EQ(placeOf(&H::initialize), 10);
    EXPECT_EQ(placeOf(&H::cleanup), 11);
    using TextsChanged = void (H::*)(const char*, const char* const*, int32_t, int32_t);
    EXPECT_EQ(placeOf(static_cast<TextsChanged>(&H::onDataChange)), 12);
    using ValueChanged = void (H::*)(const char*, const char*);
    EXPECT_EQ(placeOf(static_cast<ValueChanged>(&H::onDataChange)), 13);
    EXPECT_EQ(placeOf(&H::onTypeChange), 14);
    EXPECT_EQ(placeOf(&H::onParameterChanged), 15);
    EXPECT_EQ(placeOf(&H::onExecAction), 16);
    EXPECT_EQ(placeOf(&H::onBuildGeometry), 17);
    EXPECT_EQ(placeOf(&H::onDispatcher), 18);
    EXPECT_EQ(placeOf(&H::onGuiStatus), 19);
    EXPECT_EQ(placeOf(&H::onExecPerField), 20);
    EXPECT_EQ(placeOf(&H::dump), 21);
    EXPECT_EQ(placeOf(&H::Register), 22);
    EXPECT_EQ(placeOf(&H::RegisterField), 23);
    EXPECT_EQ(placeOf(&H::Unregister), 24);
    EXPECT_EQ(placeOf(&H::onSyncParams), 25);
    EXPECT_EQ(placeOf(&H::parseMacro), 26);
}

TEST(SlotOrder, TheOwnOperationsOfTheInstanceTakeTheSamePlaces) {
    EXPECT_EQ(placeOf(&Intake::getName), 1);
    EXPECT_EQ(placeOf(&Intake::getFlags), 6);
    EXPECT_EQ(placeOf(&Intake::syncParameters), 9);
    EXPECT_EQ(placeOf(&Intake::onParameterChanged), 15);
    EXPECT_EQ(placeOf(&Intake::onExecPerField), 20);
}

using Identity = PluginTest;

TEST_F(Identity, IsWhatTheHostFilesThePluginUnder) {
    Intake& instance = bindInstance();
    EXPECT_STREQ(instance.getName(), "Intake");
    EXPECT_STREQ(instance.getFolder(), "Data");
    EXPECT_EQ(instance.getType(), 2);
    EXPECT_STREQ(instance.getVersion(), "1.0.1");
    EXPECT_EQ(instance.getFlags(), 0);
}

using InheritedOperations = PluginTest;

TEST_F(InheritedOperations, AreTheLibrarysOwn) {
    Intake& instance = bindInstance();
    lumoDataHandler& handler = instance;
    const char* const texts[] = {"a"};
    handler.getFieldType();
    handler.onDataChange("F", texts, 1, 0);
    handler.onDataChange("F", "v");
    handler.onTypeChange(DataType::Text);
    handler.onBuildGeometry(4);
    handler.onDispatcher(7, nullptr, nullptr);
    handler.dump();
    handler.Register("F", 1);
    handler.RegisterField("F", 0);
    handler.Unregister();
    handler.onSyncParams();
    handler.parseMacro("M");
    EXPECT_EQ(host.takeCalls(),
              Calls({"getFieldType()", R"(onDataChange("F", 1, 0))", R"(onDataChange("F", "v"))",
                     "onTypeChange()", "onBuildGeometry(4)", "onDispatcher(7, null)", "dump()",
                     R"(Register("F", 1))", R"(RegisterField("F", 0))", "Unregister()",
                     "onSyncParams()", R"(parseMacro("M"))"}));
}

TEST_F(InheritedOperations, CleanupDoesNothing) {
    bindInstance().cleanup();
    EXPECT_EQ(host.takeCalls(), Calls());
}

}  // namespace
}  // namespace intake
