// Workbooks as the usual programs write them; fixtures/make_fixtures.py says which.

#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

class WorkbookBy : public WorkbookTest, public testing::WithParamInterface<const char*> {};

TEST_P(WorkbookBy, HasTheValuesThatWereWritten) {
    EXPECT_EQ(fixtureRows(GetParam(),
                          "SELECT Match, [Home & Away], [Kick-off], [On air], Odds, "
                          "Goals, F7 FROM [Fixtures list$];"),
              "Match|Home & Away|Kick-off|On air|Odds|Goals|F7\n"
              "'m1'|'Holm – Eskby'|date 45416.625|true|1.25|2|-\n"
              "'m2'|'Quay <U21> \"B\" – Ålesund'|date 45417.75|false|12|3|-\n"
              "'m3'|'  東京 – Çelik\nreplay  '|-|true|-0.5|-|-\n");
}

TEST_P(WorkbookBy, HasItsOtherSheetAndItsNames) {
    EXPECT_EQ(fixtureRows(GetParam(), "SELECT * FROM [teams$]"),
              "Code|Name\n'HOL'|'Holm'\n'ESK'|'Eskby'\n");
    EXPECT_EQ(fixtureRows(GetParam(), "SELECT * FROM Codes"), "Code\n'HOL'\n'ESK'\n");
}

INSTANTIATE_TEST_SUITE_P(EachProgram, WorkbookBy,
                         testing::Values("gnumeric.xlsx", "libreoffice.xlsx", "openpyxl.xlsx",
                                         "xlsxwriter.xlsx", "xlsxwriter-1904.xlsx",
                                         "xlsxwriter-stream.xlsx"));

class WorkbookWithFormulasBy : public WorkbookTest,
                               public testing::WithParamInterface<const char*> {};

TEST_P(WorkbookWithFormulasBy, HasTheirResults) {
    EXPECT_EQ(fixtureRows(GetParam(), "SELECT Total FROM [Fixtures list$]"), "Total\n4\n6\n0\n");
}

INSTANTIATE_TEST_SUITE_P(EachProgram, WorkbookWithFormulasBy,
                         testing::Values("gnumeric.xlsx", "libreoffice.xlsx", "xlsxwriter.xlsx"));

using WorkbookWithoutResults = WorkbookTest;

TEST_F(WorkbookWithoutResults, HasNothingWhereItsProgramDidNotCompute) {
    EXPECT_EQ(fixtureRows("openpyxl.xlsx", "SELECT Total FROM [Fixtures list$]"),
              "Total\n-\n-\n-\n");
}

}  // namespace

}  // namespace intake
