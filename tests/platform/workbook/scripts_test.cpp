// Whole scripts of worksheets, as the SQL reader writes them, carried out by the data store.

#include "platform/Platform.h"
#include "readers/sql/SQLHandler.h"
#include "tests/platform/workbook/WorkbookTest.h"
#include "tests/support/expect_carried_out.h"

namespace intake {

namespace {

class WorksheetScripts : public WorkbookTest {
protected:
    WorksheetScripts() {
        logger_.setLevel(-1);
        request_.mode = "SQL";
        request_.connStr = connectionString(SOURCE_ROOT "/samples/fixture-list.xlsx");
        request_.query = "SELECT * FROM [Round 28$];";
        request_.key = "match";
        request_.table = "T";
        request_.numRows = 1000000;
        request_.fieldsDelimiter = '|';
        request_.rowsDelimiter = '/';
    }

    std::string script(TargetMode mode) {
        request_.targetMode = mode;
        std::string script, error;
        EXPECT_TRUE(handler_.Read(request_, script, error)) << error;
        expectCarriedOut(script, mode);
        return script;
    }

    std::string error() {
        std::string script, error;
        EXPECT_FALSE(handler_.Read(request_, script, error));
        return withoutPath(error);
    }

    ReaderLogger logger_{systemPlatform().clock, systemPlatform().textFiles};
    SQLHandler handler_{logger_, systemPlatform().databases, endMark_};
    RequestRecord request_;
};

TEST_F(WorksheetScripts, HaveEveryColumnWhereNoneIsNamedAndNothingForDates) {
    request_.fromRow = 3;
    EXPECT_EQ(script(DATA_ARRAY),
              R"(T[0]={{Match="m284";Home="Greywharf";Away="Holm";Kick-off="";Televised="0";)"
              R"(Home odds="2.85";};};)"
              R"(T[1]={{Match="m285";Home="Eskby";Away="Quayside";Kick-off="";Televised="1";)"
              R"(Home odds="";};};READER_NUM_RECORDS=5;)");
}

TEST_F(WorksheetScripts, OfATableAreKeyedByAColumnsHeader) {
    request_.query = "SELECT Match, Home FROM [Round 28$];";
    request_.numRows = 2;
    EXPECT_EQ(
        script(DATA_TABLE),
        R"(T[m281]={{Match="m281";Home="Holm";};};T[m282]={{Match="m282";Home="Quayside";};};)");
}

TEST_F(WorksheetScripts, OfStructuresAreNamedByTheKey) {
    request_.query = "SELECT Code, Team FROM [Teams$] WHERE Team < 'H' ORDER BY Team;";
    request_.key = "Code";
    request_.table = "";
    EXPECT_EQ(script(DATA_STRUCTURE),
              R"(ESK={Code="ESK";Team="Eskby";};GRE={Code="GRE";Team="Greywharf";};)");
}

TEST_F(WorksheetScripts, OfAFieldArrayHaveWhatIsComputed) {
    request_.query =
        "SELECT strftime('%d.%m. %H:%M', [Kick-off] + 2415018.5) AS Match FROM [Round 28$];";
    EXPECT_EQ(script(DATA_FIELD_ARRAY),
              "T[0-4]=\"\"06.03. 15:00\"\",\"\"06.03. 17:30\"\",\"\"07.03. 14:00\"\","
              "\"\"13.03. 15:00\"\",\"\"\"\";READER_NUM_RECORDS=5;");
}

TEST_F(WorksheetScripts, OfSharedMemoryHaveTheValuesAlone) {
    request_.query = "SELECT Team, Code FROM Codes LIMIT 2";
    EXPECT_EQ(script(SHARED_MEMORY), "Holm|HOL/Eskby|ESK");
}

TEST_F(WorksheetScripts, WriteTheDigitsOfLargeNumbersWhereTheyAreWhole) {
    request_.connStr = connectionString(write(
        TestBook()
            .sheet("S", "<row><c t='str'><v>Votes</v></c></row><row><c><v>1234567</v></c></row>")
            .bytes()));
    request_.query = "SELECT Votes, CAST(Votes AS INTEGER) AS Whole FROM [S$]";
    EXPECT_EQ(script(DATA_ARRAY),
              "T[0]={{Votes=\"1.23457e+06\";Whole=\"1234567\";};};"
              "READER_NUM_RECORDS=1;");
}

TEST_F(WorksheetScripts, OfAMissingWorkbookAreTheErrorOfItsConnection) {
    request_.connStr = connectionString("/no/such.xlsx");
    EXPECT_EQ(error(), "Failed to open the connection string " + request_.connStr +
                           "Error number: 0x80004005    The workbook \"/no/such.xlsx\" cannot be "
                           "read: No such file or directory\r\r\n");
}

TEST_F(WorksheetScripts, OfAMissingSheetAreTheErrorOfItsQuery) {
    request_.connStr = connectionString(write(TestBook().sheet("S", "").bytes()));
    request_.query = "SELECT * FROM [Sheet1$];";
    EXPECT_EQ(error(),
              "Failed to open recordset with query SELECT * FROM [Sheet1$];\n"
              "Error number: 0x80040e37    The workbook \"PATH\" has no sheet \"Sheet1\"; "
              "its sheets are \"S\". A query names a sheet with a dollar sign behind it, "
              "as in [Sheet1$]\r\r\n");
}

TEST_F(WorksheetScripts, OfAMissingColumnAreTheErrorOfItsQuery) {
    request_.connStr = connectionString(
        write(TestBook().sheet("S", "<row><c t='str'><v>Name</v></c></row>").bytes()));
    request_.query = "SELECT Nmae FROM [S$];";
    EXPECT_EQ(error(),
              "Failed to open recordset with query SELECT Nmae FROM [S$];\n"
              "Error number: 0x80040e14    There is no column \"Nmae\" in the workbook "
              "\"PATH\". The columns of [S$] are \"Name\"\r\r\n");
}

}  // namespace

}  // namespace intake
