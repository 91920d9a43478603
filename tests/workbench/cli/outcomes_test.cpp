// How `load` judges an answer, with a plugin that gives every kind of answer.

#include "tests/workbench/cli/Workbench.h"

namespace {

struct Outcomes : Workbench {
    ChildResult answer(std::vector<std::string> settings, std::vector<std::string> more = {}) {
        more.insert(more.end(), {"--plugin", ANSWERING_PLUGIN});
        return load(settings, more);
    }
};

// What the plugin prints on its standard output.
const std::string printed = "fetching\ncleaned up\n";

}  // namespace

TEST_F(Outcomes, WhatThePluginPrintsIsShownOnStandardErrorOnly) {
    const ChildResult result = answer({"console=A=1;", "script=A=1;"}, {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "A=1;");
    EXPECT_EQ(result.err, printed);
}

TEST_F(Outcomes, AConsoleTextThatGoesOnAfterTheFallbackIsAFailure) {
    const ChildResult result =
        answer({"console=READER_NUM_RECORDS=0;no such row", "script=READER_NUM_RECORDS=0;"},
               {"--out", "script"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
    EXPECT_EQ(result.err, "fetching\nno such row\ncleaned up\n");
}

TEST_F(Outcomes, ThePrefixIsPartOfTheFallback) {
    const ChildResult failed = answer({"varsPrefix=P_", "console=P_READER_NUM_RECORDS=0;broken",
                                       "script=P_READER_NUM_RECORDS=0;"},
                                      {"--out", "script"});
    EXPECT_EQ(failed.status, 1);
    const ChildResult loaded =
        answer({"varsPrefix=P_", "console=READER_NUM_RECORDS=0;", "script=READER_NUM_RECORDS=0;"},
               {"--out", "script"});
    EXPECT_EQ(loaded.status, 0);
}

TEST_F(Outcomes, AFailureWithoutATextNamesTheSource) {
    write("league.json", "");
    const ChildResult result = answer(
        {"filename=league.json", "console=READER_NUM_RECORDS=0;", "script=READER_NUM_RECORDS=0;"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "fetching\nCould not load \"league.json\"\ncleaned up\n");
}

TEST_F(Outcomes, AnEmptyQueryResultIsNoFailure) {
    for (const char* query : {"queryMode=EXCEL", "queryMode=SQL"}) {
        const ChildResult result =
            answer({query, "console=READER_NUM_RECORDS=0;", "script=READER_NUM_RECORDS=0;"});
        EXPECT_EQ(result.status, 0) << query;
        EXPECT_EQ(result.err, printed) << query;
    }
}

TEST_F(Outcomes, AQueryThatFailsWithATextIsAFailure) {
    const ChildResult result = answer(
        {"queryMode=SQL", "console=READER_NUM_RECORDS=0;no table", "script=READER_NUM_RECORDS=0;"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "fetching\nno table\ncleaned up\n");
}

TEST_F(Outcomes, TheLineEndOfAnErrorTextIsNotDoubled) {
    const ChildResult result =
        answer({"console=READER_NUM_RECORDS=0;lost\r\n", "script=READER_NUM_RECORDS=0;"});
    EXPECT_EQ(result.err, "fetching\nlost\ncleaned up\n");
}

TEST_F(Outcomes, AScriptThatTheStoreCannotExecuteEndsWithFourAndSaysWhere) {
    const ChildResult result = answer({"console=x", "script=A=1;\nB"}, {"--out", "json"});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.out, "{}\n");
    EXPECT_TRUE(result.err.starts_with(
        "fetching\nThe data store could not execute the script: line 2, column "))
        << result.err;
}

TEST_F(Outcomes, SharedMemoryThatIsBoundHoldsTheText) {
    const ChildResult result =
        answer({"mode=4", "bound=1", "console=a|b", "script=a|b"}, {"--out", "script"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "a|b");
}

TEST_F(Outcomes, SharedMemoryThatIsNotBoundEndsWithFour) {
    const ChildResult result = answer({"mode=4", "console=a|b", "script=a|b"}, {"--out", "script"});
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "fetching\nNothing was stored: no shared memory is bound. It is bound when shmvar or "
              "shmtype changes, so set one of them.\ncleaned up\n");
}

TEST_F(Outcomes, AFreshInstanceIsCreatedLoadedSetAndAskedOnce) {
    const ChildResult result =
        answer({"filename=a", "filename=b", "script=A=1;"}, {"--define", "Calls", "--out", "json"});
    EXPECT_EQ(result.out,
              "{\n  \"Calls\": \"created, loaded, changed 5 to a, changed 5 to b, "
              "changed 7 to b, action 0, frame\",\n  \"A\": 1\n}\n");
}

TEST_F(Outcomes, AStoredInstanceIsLoadedWithItsSceneSetAndAskedOnce) {
    write("scene.json", R"({"instances": [{"name": "a", "parameters": {"filename": "stored"}}]})");
    const ChildResult result =
        answer({"script=A=1;"}, {"--scene", "scene.json", "--define", "Calls", "--out", "json"});
    EXPECT_EQ(result.out,
              "{\n  \"Calls\": \"loaded, after load, changed 7 to stored, action 0, frame\",\n"
              "  \"A\": 1\n}\n");
}

TEST_F(Outcomes, NoAnswerInTimeEndsWithThree) {
    const ChildResult result =
        answer({"filename=slow.json", "answers=0"}, {"--timeout", "0.1", "--out", "json"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, "{}\n");
    EXPECT_EQ(result.err,
              "fetching\nNo answer for \"slow.json\" within 0.1 seconds.\ncleaned up\n");
}

TEST_F(Outcomes, TheConsoleLookUpIsNotTracedUnlessTheUserSwitchedItOn) {
    const std::vector<std::string> settings{"console=A=1;", "script=A=1;"};
    std::vector<std::string> shown = settings;
    shown.push_back("show_data=1");
    const std::string lookUp = "Cobalt::findField(\"READER_CONSOLE\", 0, 1)\n";
    EXPECT_EQ(answer(settings, {"--out", "trace"}).out.find(lookUp), std::string::npos);
    EXPECT_NE(answer(shown, {"--out", "trace"}).out.find(lookUp), std::string::npos);
}

TEST_F(Outcomes, AConsoleFieldIsWrittenWhenItExistsAndShowDataIsOn) {
    const ChildResult result = answer({"console=text", "script=A=1;", "show_data=1"},
                                      {"--define", "READER_CONSOLE", "--out", "json"});
    EXPECT_EQ(result.out, "{\n  \"READER_CONSOLE\": \"text\",\n  \"A\": 1\n}\n");
}

TEST_F(Outcomes, AConsoleFieldIsNotWrittenWhileShowDataIsOff) {
    const ChildResult result =
        answer({"console=text", "script=A=1;"}, {"--define", "READER_CONSOLE", "--out", "json"});
    EXPECT_EQ(result.out, "{\n  \"READER_CONSOLE\": \"\",\n  \"A\": 1\n}\n");
}

TEST_F(Outcomes, AConsoleFieldThatDoesNotExistIsNotMade) {
    const ChildResult result =
        answer({"console=text", "script=A=1;", "show_data=1"}, {"--out", "json"});
    EXPECT_EQ(result.out, "{\n  \"A\": 1\n}\n");
}

TEST_F(Outcomes, APluginThatCannotBeWatchedIsRefused) {
    const ChildResult result = run({"load", "--plugin", PROBE_PLUGIN});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "intake-workbench: This plugin cannot be watched: it has no parameter "
              "\"queryMode\".\n");
}
