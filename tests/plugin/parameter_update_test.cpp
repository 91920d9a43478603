#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

class ParameterUpdate : public PluginTest {
protected:
    void update(const char* text) {
        IntakeCallback& callback = bindInstance();
        callback.onParameterUpdate(text);
    }
};

TEST_F(ParameterUpdate, CopiesFileNameAndSheetAndDrawsTheEditorOnce) {
    update("FILENAME |C:/table.xlsx| SHEET |Sheet1| ");
    EXPECT_STREQ(params().filename, "C:/table.xlsx");
    EXPECT_STREQ(params().sheet, "Sheet1");
    EXPECT_EQ(host.takeCalls(), Calls({"evSendGuiRefresh()"}));
}

TEST_F(ParameterUpdate, TakesCharactersBehindABackslashAsTheyAre) {
    update(R"(FILENAME |C:\\dir\|x| )");
    EXPECT_STREQ(params().filename, R"(C:\dir|x)");
}

TEST_F(ParameterUpdate, SkipsOtherKeysWithTheirValues) {
    update(R"(QUERY |SELECT FILENAME \|x\|| filename |lower| SHEET |Sheet1|)");
    EXPECT_STREQ(params().query, "");
    EXPECT_STREQ(params().filename, "");
    EXPECT_STREQ(params().sheet, "Sheet1");
}

TEST_F(ParameterUpdate, TheLastOfTwoEntriesHolds) {
    update("SHEET |a| SHEET |b|");
    EXPECT_STREQ(params().sheet, "b");
}

TEST_F(ParameterUpdate, AnEmptyValueEmptiesTheParameter) {
    TestRecord::set(params().filename, "old");
    update("FILENAME ||");
    EXPECT_STREQ(params().filename, "");
}

TEST_F(ParameterUpdate, AValueWithoutAnEndIsNotTaken) {
    for (const char* text :
         {"SHEET |new| FILENAME |half", "SHEET |new| FILENAME", "SHEET |new| FILENAME |half\\|"}) {
        TestRecord::set(params().filename, "old");
        TestRecord::set(params().sheet, "old");
        update(text);
        EXPECT_STREQ(params().filename, "old") << text;
        EXPECT_STREQ(params().sheet, "new") << text;
        EXPECT_EQ(host.takeCalls(), Calls({"evSendGuiRefresh()"}));
    }
}

TEST_F(ParameterUpdate, AValueIsBoundedTo512BytesWithItsTerminator) {
    const std::string fits(511, 'f');
    update(("FILENAME |" + fits + "| SHEET |" + std::string(5000, 's') + "|").c_str());
    EXPECT_EQ(params().filename, fits);
    EXPECT_EQ(params().sheet, std::string(511, 's'));
}

TEST_F(ParameterUpdate, AnEmptyTextOnlyDrawsTheEditor) {
    for (const char* text : {"", "   \n", static_cast<const char*>(nullptr)}) {
        update(text);
        EXPECT_EQ(host.takeCalls(), Calls({"evSendGuiRefresh()"}));
    }
}

TEST_F(ParameterUpdate, DrawsTheEditorOnceForManyEntries) {
    update("SHEET |a| SHEET |b| OTHER |c| FILENAME |d|");
    EXPECT_EQ(host.takeCalls(), Calls({"evSendGuiRefresh()"}));
}

TEST_F(ParameterUpdate, TheReservedOperationDoesNothing) {
    IntakeCallback& callback = bindInstance();
    callback.onReserved();
    EXPECT_EQ(host.takeCalls(), Calls());
}

}  // namespace
}  // namespace intake
