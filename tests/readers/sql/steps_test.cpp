// The steps of a load, in order, as the databases see them and as the log tells them.

#include "tests/readers/sql/SQLHandlerFixture.h"

#include <fstream>
#include <iterator>

#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

using SqlSteps = SQLHandlerFixture;

TEST_F(SqlSteps, OfARecordArePassedOnAsTheyAreAndEndedInReverse) {
    databases_.names = {"code", "team"};
    databases_.rows = {{"HOL", "Holm"}};
    request_.connStr = " Provider=x;PWD='a;b' ";
    request_.query = "SELECT code, team FROM teams;";
    EXPECT_TRUE(read());
    EXPECT_EQ(databases_.calls(),
              "createConnection\n"
              "open  Provider=x;PWD='a;b' \n"
              "openRecordset SELECT code, team FROM teams;\n"
              "atEnd\n"
              "moveFirst\n"
              "fieldCount\n"
              "fieldName 0\n"
              "fieldName 1\n"
              "atEnd\n"
              "findField code\n"
              "value 0\n"
              "value 0\n"
              "value 1\n"
              "moveNext\n"
              "atEnd\n"
              "release recordset\n"
              "release connection\n");
}

TEST_F(SqlSteps, OfAnEmptyResultDoNotMoveToARecord) {
    EXPECT_TRUE(read());
    EXPECT_EQ(databases_.calls(),
              "createConnection\n"
              "open DSN=league\n"
              "openRecordset SELECT * FROM teams\n"
              "atEnd\n"
              "release recordset\n"
              "release connection\n");
}

TEST_F(SqlSteps, OfARowBeforeTheRangeAskForNoValue) {
    databases_.names = {"code"};
    databases_.rows = {{"HOL"}, {"ESK"}};
    request_.fromRow = 2;
    EXPECT_TRUE(read());
    EXPECT_EQ(databases_.calls(),
              "createConnection\n"
              "open DSN=league\n"
              "openRecordset SELECT * FROM teams\n"
              "atEnd\n"
              "moveFirst\n"
              "fieldCount\n"
              "fieldName 0\n"
              "atEnd\n"
              "moveNext\n"
              "atEnd\n"
              "moveNext\n"
              "atEnd\n"
              "release recordset\n"
              "release connection\n");
}

TEST_F(SqlSteps, EndWithTheRange) {
    databases_.names = {"code"};
    databases_.rows = {{"HOL"}, {"ESK"}};
    request_.numRows = 1;
    request_.targetMode = DATA_ARRAY;
    EXPECT_TRUE(read());
    EXPECT_EQ(databases_.calls(),
              "createConnection\n"
              "open DSN=league\n"
              "openRecordset SELECT * FROM teams\n"
              "atEnd\n"
              "moveFirst\n"
              "fieldCount\n"
              "fieldName 0\n"
              "atEnd\n"
              "value 0\n"
              "moveNext\n"
              "release recordset\n"
              "release connection\n");
}

TEST_F(SqlSteps, WatchTheEndMarkOfTheWorker) {
    EXPECT_TRUE(read());
    EXPECT_EQ(databases_.endMark(), &endMark_);
}

TEST_F(SqlSteps, AreTracedInTheLogWithoutTheConnectionString) {
    TempWorkingDirectory directory;
    logger_.setLevel(LOG_DEBUG);
    request_.connStr = "PWD=s3cret";
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        scriptAlone(mode);
    }
    std::ifstream log("2026-03-05-0907-Intake.log");
    const std::string prefix = "5/3 9:7 DEBUG: \t\t\t";
    const std::string steps = prefix + "Before CreateInstance\n" + prefix +
                              "Before connection open\n" + prefix + "Before recordset open\n";
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}),
              steps + prefix + "Before DATATABLE\n" + steps + prefix + "Before DATAARRAY\n" +
                  steps + prefix + "Before DATASTRUCTURE\n" + steps + prefix +
                  "Before DATAFIELDARRAY\n" + steps + prefix + "Before SHAREDMEM\n");
}

TEST_F(SqlSteps, LogWhatAnOpenConnectionIgnores) {
    const TempWorkingDirectory directory;
    databases_.warnings = {"There is no option \"A\".", "There is no option \"B\"."};
    logger_.setLevel(LOG_WARNING);

    script(DATA_ARRAY);

    std::ifstream log("2026-03-05-0907-Intake.log");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}),
              "5/3 9:7 WARNING: \t\t\tSQL: There is no option \"A\".\n"
              "5/3 9:7 WARNING: \t\t\tSQL: There is no option \"B\".\n");
}

}  // namespace
}  // namespace intake
