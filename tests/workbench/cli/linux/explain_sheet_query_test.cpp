// What `explain` and `explore` say of queries on sheets.

#include "tests/formats/workbook/TestBook.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

std::string cell(const std::string& text) {
    return "<c t='inlineStr'><is><t>" + text + "</t></is></c>";
}

class ExplainedSheetQuery : public ExplainTest {
protected:
    ExplainedSheetQuery() {
        intake::TestBook book;
        book.sheet("Teams", "<row>" + cell("Code") + cell("Team name") + "</row><row>" +
                                cell("HOL") + cell("Holm") + "</row><row>" + cell("VIK") +
                                cell("Vik") + "</row>");
        write("teams.xlsx", book.bytes());
    }

    static constexpr const char* connection =
        "connStr=Provider=Microsoft.ACE.OLEDB.12.0;Data Source=teams.xlsx;"
        "Extended Properties=\"Excel 12.0 Xml;HDR=YES\"";

    static Settings of(const std::string& query) {
        return {"queryMode=SQL",  connection, "query=" + query,
                "mode=DataTable", "table=T",  "key=Code"};
    }
};

}  // namespace

TEST_F(ExplainedSheetQuery, ThatLoadsHasATickAtEachStage) {
    expectExplained(of("SELECT * FROM [Teams$] WHERE Code = 'vik'"), R"(
teams.xlsx: 1 record, # s
  ✓ settings
  ✓ address   teams.xlsx
  ✓ fetched   connected, # ms
  ✓ format    a workbook
  ✓ selection SELECT * FROM [Teams$] WHERE Code = 'vik': 1 row, 2 columns
  ✓ key       Code
  ✓ rows      all 1
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedSheetQuery, OfASheetThatIsNotThereIsToldAndMended) {
    const Explained explained(explain(of("SELECT * FROM [Team$]"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "selection");
    EXPECT_EQ(explained.failed()->place, "[Team$]");
    EXPECT_EQ(explained.failed()->cause, "No such table: Team$. The database has: Teams$.");
    EXPECT_EQ(explained.failed()->set, Settings{"query=SELECT * FROM [Teams$]"});
    EXPECT_EQ(explained.failed()->records, 2U);
}

TEST_F(ExplainedSheetQuery, OfAColumnThatIsNotThereIsToldAndMended) {
    const Explained explained(
        explain(of("SELECT Kode AS Code, [Team name] FROM [Teams$]"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->place, "Kode");
    EXPECT_EQ(explained.failed()->set,
              Settings{"query=SELECT [Code] AS Code, [Team name] FROM [Teams$]"});
}

TEST_F(ExplainedSheetQuery, OfAFileThatIsNoWorkbookIsTold) {
    write("teams.xlsx", "Code,Team\n");
    const Explained explained(explain(of("SELECT * FROM [Teams$]"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "format");
}

TEST_F(ExplainedSheetQuery, SheetsAndColumnsAreExplored) {
    const ChildResult result = run({"explore", "--set", "queryMode=SQL", "--set", connection});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("--set 'query=SELECT * FROM [Teams$]'"), std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("--set 'query=SELECT [Team name] FROM [Teams$]'"), std::string::npos);
    const ChildResult preview = run({"explore", "--set", "queryMode=SQL", "--set", connection,
                                     "--at", "Teams$", "--from", "2", "--out", "json"});
    EXPECT_NE(preview.out.find("\"preview\""), std::string::npos) << preview.out << preview.err;
    EXPECT_EQ(preview.out.find("\"rows\": []"), std::string::npos) << preview.out;
}
