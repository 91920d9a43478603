#include "pipeline/WorkerState.h"

#include <gtest/gtest.h>

#include <fstream>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>

#include "readers/Readers.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

using Step = FakeFiles::Step;

class ProcessCommandTest : public testing::Test {
protected:
    struct Outcome {
        bool success = false;
        std::string answer;
        std::string error;
    };

    Outcome process(const std::string& command) {
        Outcome outcome;
        worker_.ProcessCommand(command, outcome.success, outcome.answer, outcome.error);
        return outcome;
    }

    std::string errorOf(const std::string& command) {
        const Outcome outcome = process(command);
        EXPECT_FALSE(outcome.success);
        EXPECT_EQ(outcome.answer, "");
        return outcome.error;
    }

    /// The error of a load whose reader throws.
    template <class Thrown>
    std::string errorWhenReaderThrows(Thrown thrown) {
        platform_.files.runAt(Step::OPEN, "a.json", [thrown] { throw thrown; });
        return errorOf("MODE |JSON| FILENAME |a.json| ");
    }

    static std::string log() {
        std::ostringstream content;
        content << std::ifstream("2026-03-05-0907-Intake.log").rdbuf();
        return content.str();
    }

    TempWorkingDirectory directory_;
    FakePlatform platform_;
    WorkerState worker_{platform_.services, makerOfReaders(platform_.services)};
};

}  // namespace

TEST_F(ProcessCommandTest, ASuccessYieldsTheScriptAndNoError) {
    platform_.files.put("a.json", R"({"items":["x","y"]})");
    const Outcome outcome = process(
        "MODE |JSON| FILENAME |a.json| XPATH |items| TABLE |T| VARSPREFIX |P.| TGT_MODE 3 "
        "NUM_ROWS || ");
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.answer, R"(T[0-1]=""x"",""y""; P.READER_NUM_RECORDS=2;)");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ProcessCommandTest, ASourceWithNoRowsYieldsOnlyTheRowCountAssignmentWithZero) {
    platform_.files.put("a.json", R"({"items":[]})");
    const Outcome outcome =
        process("MODE |JSON| FILENAME |a.json| XPATH |items| TABLE |T| TGT_MODE 1 NUM_ROWS || ");
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.answer, "; READER_NUM_RECORDS=0;");
}

TEST_F(ProcessCommandTest, AFailureYieldsTheErrorAndNoScript) {
    platform_.files.put("a.json", "{");
    EXPECT_EQ(errorOf("MODE |JSON| FILENAME |a.json| ").substr(0, 28),
              "Error parsing JSON: a.json: ");
}

TEST_F(ProcessCommandTest, EveryModeHasAReaderOfItsOwn) {
    platform_.xml.unreadable = "there is no such file";
    platform_.databases.failAt("open");
    std::set<std::string> errors;
    for (const std::string mode : {"SQL", "HTML", "JSON", "XML"}) {
        errors.insert(errorOf("MODE |" + mode + "| FILENAME |missing| "));
    }
    EXPECT_EQ(errors.size(), 4U);
}

TEST_F(ProcessCommandTest, AModeOfJsonInLowerCaseGoesToTheXmlReader) {
    platform_.xml.unreadable = "there is no such file";
    const std::string xmlError = errorOf("MODE |XML| FILENAME |missing| ");
    EXPECT_EQ(errorOf("MODE |json| FILENAME |missing| "), xmlError);
}

TEST_F(ProcessCommandTest, APlatformErrorBecomesItsReport) {
    platform_.xml.failAt("selectNodes");
    EXPECT_EQ(errorOf("MODE |XML| FILENAME |a.xml| "), FakeXml::failureReport());
}

TEST_F(ProcessCommandTest, AnSqlCommandIsAnsweredByTheDatabaseOfItsConnectionString) {
    platform_.databases.names = {"code"};
    platform_.databases.rows = {{"HOL"}};
    const Outcome outcome =
        process("MODE |SQL| CONNSTR |DSN=x| QUERY |SELECT 1| TABLE |T| TGT_MODE 1 NUM_ROWS || ");
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.answer, R"(T[0]={{code="HOL";};};READER_NUM_RECORDS=1;)");
    EXPECT_NE(platform_.databases.calls().find("open DSN=x\nopenRecordset SELECT 1\n"),
              std::string::npos);
}

TEST_F(ProcessCommandTest, ADatabaseThatFailsOnTheWayBecomesItsReport) {
    platform_.databases.names = {"code"};
    platform_.databases.rows = {{"HOL"}};
    platform_.databases.failAt("moveNext");
    EXPECT_EQ(errorOf("MODE |SQL| TGT_MODE 1 NUM_ROWS || "), FakeDatabases::failureReport());
}

TEST_F(ProcessCommandTest, AQueryThatRunsOutOfMemoryIsNamed) {
    struct FullDatabases final : DatabaseServices {
        std::unique_ptr<Connection> createConnection(const EndMark&) override {
            throw std::bad_alloc();
        }
    } databases;
    const Platform& services = platform_.services;
    const Platform platform{services.clock,     services.threads,     services.files,
                            services.textFiles, services.diagnostics, services.http,
                            services.xml,       services.html,        databases};
    WorkerState worker(platform, makerOfReaders(platform));
    Outcome outcome;
    worker.ProcessCommand("MODE |SQL| QUERY |SELECT 1| ", outcome.success, outcome.answer,
                          outcome.error);
    EXPECT_FALSE(outcome.success);
    EXPECT_EQ(outcome.error, "Not enough memory to load SELECT 1.\n");
}

TEST_F(ProcessCommandTest, AnUnknownAnEmptyAndAMissingModeGoToTheXmlReader) {
    platform_.xml.unreadable = "there is no such file";
    const std::string xmlError = errorOf("MODE |XML| FILENAME |missing| ");
    EXPECT_EQ(errorOf("MODE |CSV| FILENAME |missing| "), xmlError);
    EXPECT_EQ(errorOf("MODE |JSON | FILENAME |missing| "), xmlError);
    EXPECT_EQ(errorOf("MODE || FILENAME |missing| "), xmlError);
    EXPECT_EQ(errorOf("FILENAME |missing| "), xmlError);
}

TEST_F(ProcessCommandTest, TheCommandIsLoggedAtInfo) {
    process("MODE |JSON| FILENAME |missing| LOG_LEVEL 3 ");
    EXPECT_EQ(log(), "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| FILENAME |missing| LOG_LEVEL 3 \n");
}

TEST_F(ProcessCommandTest, TheErrorIsLoggedAtDebugBehindTheReadersTrace) {
    platform_.files.runAt(Step::OPEN, "a.json", [] { throw std::runtime_error("No more."); });
    process("MODE |JSON| FILENAME |a.json| LOG_LEVEL 4 ");
    EXPECT_EQ(log(),
              "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| FILENAME |a.json| LOG_LEVEL 4 \n"
              "5/3 9:7 DEBUG: \t\t\tJSON: a.json"
              "5/3 9:7 DEBUG: \t\t\tError: No more.\n");
}

TEST_F(ProcessCommandTest, TheAnswerIsLoggedAtDebugBehindTheReadersTrace) {
    platform_.files.put("a.json", R"({"a":1})");
    process("MODE |JSON| FILENAME |a.json| TABLE |T| LOG_LEVEL 4 ");
    EXPECT_EQ(log(),
              "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| FILENAME |a.json| TABLE |T| LOG_LEVEL 4 \n"
              "5/3 9:7 DEBUG: \t\t\tJSON: a.json"
              "5/3 9:7 DEBUG: \t\t\tAnswer: T={a=1;};\n");
}

TEST_F(ProcessCommandTest, ALogLevelOfTwoWritesNoCommandLineAndNoAnswerLine) {
    process("MODE |JSON| FILENAME |missing| LOG_LEVEL 2 ");
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(ProcessCommandTest, TheLogLevelIsThatOfEachCommand) {
    process("MODE |JSON| LOG_LEVEL 3 KEY |1| ");
    process("MODE |JSON| LOG_LEVEL 0 KEY |2| ");
    process("MODE |JSON| KEY |3| ");
    process("MODE |JSON| LOG_LEVEL 3 KEY |4| ");
    EXPECT_EQ(log(),
              "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| LOG_LEVEL 3 KEY |1| \n"
              "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| LOG_LEVEL 3 KEY |4| \n");
}

TEST_F(ProcessCommandTest, WhatAReaderThrowsBecomesTheErrorText) {
    EXPECT_EQ(errorWhenReaderThrows(std::runtime_error("The cable is cut.")), "The cable is cut.");
}

TEST_F(ProcessCommandTest, AReaderThatRunsOutOfMemoryFailsTheLoadAndNamesTheSource) {
    EXPECT_EQ(errorWhenReaderThrows(std::bad_alloc()), "Not enough memory to load a.json.\n");
}

TEST_F(ProcessCommandTest, AReaderThatThrowsAnythingElseFailsTheLoadAndNamesTheSource) {
    EXPECT_EQ(errorWhenReaderThrows(42), "An unknown failure ended the load of a.json.\n");
}

TEST_F(ProcessCommandTest, TheNextCommandIsNotTouchedByAFailureBefore) {
    errorWhenReaderThrows(std::runtime_error("x"));
    platform_.files.put("b.json", R"({"a":1})");
    const Outcome outcome = process("MODE |JSON| FILENAME |b.json| TABLE |T| ");
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.answer, "T={a=1;};");
    EXPECT_EQ(outcome.error, "");
}

TEST_F(ProcessCommandTest, AZeroCharacterInAValueDoesNotCutTheScript) {
    platform_.files.put("a.json", R"({"a":"x\u0000y","b":"z"})");
    EXPECT_EQ(process("MODE |JSON| FILENAME |a.json| TABLE |T| ").answer,
              R"(T={a=""xy"";b=""z"";};)");
}

}  // namespace intake
