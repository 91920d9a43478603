// Worksheets from end to end: the connection string and the query are derived from file and sheet.

#include "tests/formats/workbook/TestBook.h"
#include "tests/sql/SqlWorkbench.h"

namespace intake {
namespace {

struct ExcelLoad : Workbench {
    ExcelLoad() {
        write(
            "league.xlsx",
            TestBook()
                .sheet("Sheet1", R"(<row><c t="str"><v>code</v></c><c t="str"><v>name</v></c>)"
                                 R"(<c t="str"><v>points</v></c></row>)"
                                 R"(<row><c t="str"><v>HOL</v></c><c t="str"><v>Hollinbeck</v></c>)"
                                 R"(<c><v>68</v></c></row>)"
                                 R"(<row><c t="str"><v>ESK</v></c><c/><c><v>51.5</v></c></row>)")
                .bytes());
    }

    ChildResult sheet(std::vector<std::string> settings) {
        settings.insert(settings.begin(),
                        {"queryMode=EXCEL", "filename=league.xlsx", "sheet=Sheet1", "table=T"});
        return load(settings, {"--out", "script"});
    }

    /// What a load that must fail says.
    std::string error(const std::vector<std::string>& settings) {
        const ChildResult result = sheet(settings);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
        return result.err;
    }
};

TEST_F(ExcelLoad, TakesEveryColumnWithoutARange) {
    const ChildResult result = sheet({"mode=DataTable", "key=Code"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, R"(T[HOL]={{code="HOL";name="Hollinbeck";points="68";};};)"
                          R"(T[ESK]={{code="ESK";name="";points="51.5";};};)");
}

TEST_F(ExcelLoad, TakesTheColumnsOfTheRangeInItsOrder) {
    const ChildResult result =
        sheet({"mode=DataArray", "range=points, name", "fromRow=1", "varsPrefix=L_"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, R"(T[0]={{points="51.5";name="";};};L_READER_NUM_RECORDS=2;)");
}

TEST_F(ExcelLoad, OfAMissingWorkbookFailsToConnect) {
    const std::string all = error({"filename=cup.xlsx"});
    EXPECT_TRUE(all.starts_with("cup.xlsx was looked for as /")) << all;
    EXPECT_EQ(
        all.substr(all.find('\n') + 1),
        "Failed to open the connection string Provider=Microsoft.ACE.OLEDB.12.0;Data "
        "Source=cup.xlsx;Extended Properties=\"Excel 12.0 Xml;HDR=YES\";Error number: "
        "0x80004005    The workbook \"cup.xlsx\" cannot be read: No such file or directory\n");
}

TEST_F(ExcelLoad, OfAMissingSheetFailsToRunItsQuery) {
    const std::string missing = error({"sheet=Sheet2"});
    EXPECT_TRUE(missing.starts_with(
        "Failed to open recordset with query SELECT * FROM [Sheet2$];\n"
        "Error number: 0x80040e37    The workbook \"league.xlsx\" has no sheet \"Sheet2\""))
        << missing;
}

TEST_F(ExcelLoad, OfASheetWhoseNameEndsInADollarSignAsksForASecondOne) {
    const std::string missing = error({"sheet=Sheet1$"});
    EXPECT_TRUE(
        missing.starts_with("Failed to open recordset with query SELECT * FROM [Sheet1$$];\n"))
        << missing;
}

TEST_F(ExcelLoad, OfAMissingColumnFailsToRunItsQuery) {
    const std::string missing = error({"range=goals"});
    EXPECT_TRUE(missing.starts_with(
        "Failed to open recordset with query SELECT goals FROM [Sheet1$];\n"
        "Error number: 0x80040e14    There is no column \"goals\" in the workbook "
        "\"league.xlsx\""))
        << missing;
}

TEST_F(ExcelLoad, OfAKeyThatIsNoHeaderFails) {
    EXPECT_EQ(error({"mode=DataTable", "key=goals"}), "ERROR: Key: \"goals\" not found.\n");
}

}  // namespace
}  // namespace intake
