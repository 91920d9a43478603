// What `explore` lists of workbooks.

#include "tests/formats/workbook/TestBook.h"
#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

/// Two sheets, with a blank, a number and a switch.
std::string fixtureList() {
    return intake::TestBook()
        .sheet("Round 28",
               "<row><c t='inlineStr'><is><t>Home</t></is></c><c t='inlineStr'><is><t>Home "
               "odds</t></is></c><c t='inlineStr'><is><t>Live</t></is></c></row>"
               "<row><c t='inlineStr'><is><t>Holm</t></is></c><c><v>2.1</v></c></row>"
               "<row><c t='inlineStr'><is><t>Vik</t></is></c><c><v>1.8</v></c>"
               "<c t='b'><v>1</v></c></row>")
        .sheet("Teams", "<row><c t='inlineStr'><is><t>Team</t></is></c></row>")
        .bytes();
}

/// One sheet, which is hidden.
std::string withHiddenSheet() {
    return intake::TestBook()
        .sheet("Teams", "<row><c t='inlineStr'><is><t>Team</t></is></c></row>")
        .part("xl/workbook.xml",
              "<workbook xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
              "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
              "<sheets><sheet name='Teams' sheetId='1' state='hidden' r:id='rId1'/></sheets>"
              "</workbook>")
        .bytes();
}

class ExploredWorkbook : public ExploreTest {};

}  // namespace

TEST_F(ExploredWorkbook, WorkbooksAreListedBySheetsAndColumns) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name         kind      first value  select it by
      2  Round 28     sheet                  --set 'sheet=Round 28'
      2    Home       texts     Holm         --set 'sheet=Round 28' --set range=Home
      2    Home odds  numbers   2.1          --set 'sheet=Round 28' --set 'range=[Home odds]'
      2    Live       switches  1            --set 'sheet=Round 28' --set range=Live
      0  Teams        sheet                  --set sheet=Teams
      0    Team       blank                  --set sheet=Teams --set range=Team

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28'
)");
}

TEST_F(ExploredWorkbook, WorkbooksHaveNoSheetAtAPlaceThatIsNotThere) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx", "--at", "Clubs"}, R"(
fixtures.xlsx has no sheet "Clubs", but Round 28, Teams.
)",
                   1);
}

TEST_F(ExploredWorkbook, WorkbooksAreSearchedAndLimited) {
    write("fixtures.xlsx", fixtureList());
    expectExplored({"fixtures.xlsx", "--find", "HOLM"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name    kind   first value  select it by
      2    Home  texts  Holm         --set 'sheet=Round 28' --set range=Home

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28' --set range=Home
)");
    expectExplored({"fixtures.xlsx", "--limit", "2"}, R"(
fixtures.xlsx is a workbook, 1.6 kB
records  name      kind   first value  select it by
      2  Round 28  sheet               --set 'sheet=Round 28'
      2    Home    texts  Holm         --set 'sheet=Round 28' --set range=Home
(4 more; --limit lists more, --from goes on, --at goes down, --find searches)

Load one, for example: intake-workbench load fixtures.xlsx --set mode=DataArray --set 'sheet=Round 28'
)");
}

TEST_F(ExploredWorkbook, AHiddenSheetIsListedAsSuch) {
    write("fixtures.xlsx", withHiddenSheet());
    expectExplored({"fixtures.xlsx"}, R"(
fixtures.xlsx is a workbook, 1.2 kB
records  name    kind          first value  select it by
      0  Teams   hidden sheet               --set sheet=Teams
      0    Team  blank                      --set sheet=Teams --set range=Team
)");
}

TEST_F(ExploredWorkbook, WorkbooksAreListedPageByPage) {
    write("fixtures.xlsx", fixtureList());
    EXPECT_EQ(pageOf({"fixtures.xlsx", "--limit", "2", "--from", "3"}), "Live, Teams of 6");
    EXPECT_EQ(pageOf({"fixtures.xlsx", "--at", "round 28", "--limit", "2", "--from", "2"}),
              "Home odds, Live of 4");
    EXPECT_EQ(pageOf({"fixtures.xlsx", "--find", "e", "--limit", "1", "--from", "1"}),
              "Home odds of more");
}

TEST_F(ExploredWorkbook, ASheetIsPreviewedWithTheColumnsOfItsPage) {
    write("fixtures.xlsx", fixtureList());
    EXPECT_EQ(previewOf({"fixtures.xlsx"}), "none");
    EXPECT_EQ(previewOf({"fixtures.xlsx", "--at", "Round 28"}), R"(
Home|Home odds|Live
Holm|2.1|
Vik|1.8|1
0)");
    EXPECT_EQ(previewOf({"fixtures.xlsx", "--at", "Round 28", "--from", "2", "--limit", "1"}), R"(
Home odds
2.1
1.8
0)");
    EXPECT_EQ(previewOf({"fixtures.xlsx", "--at", "Teams"}), "\nTeam\n0");
}

TEST_F(ExploredWorkbook, TheJsonFormMarksHiddenSheetsAndNamesKeys) {
    write("fixtures.xlsx", withHiddenSheet());
    const rapidjson::Document json = explored({"fixtures.xlsx"});
    const rapidjson::Value& sheet = json["entries"][0];
    EXPECT_EQ(sheet["type"], "sheet");
    EXPECT_TRUE(sheet["hidden"].GetBool());
    EXPECT_EQ(sheet["rows"].GetUint(), 1U);
    EXPECT_EQ(sheet["columns"].GetUint(), 1U);
    EXPECT_EQ(json["entries"][1]["type"], "column");
    EXPECT_EQ(json["entries"][1]["key"], "Team");
}
