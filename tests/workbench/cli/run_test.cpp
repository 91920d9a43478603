// `run` from end to end: scenes whose instances load by themselves.

#include "tests/workbench/cli/Workbench.h"

namespace {

struct Run : Workbench {
    Run() { write("source.json", R"({"clubs": ["ARS", "MCI"], "rounds": [1, 2, 3]})"); }
};

}  // namespace

TEST_F(Run, InstancesThatLoadAutomaticallyFillTheOneStore) {
    write("scene.json", R"({"instances": [
        {"name": "clubs", "parameters": {"queryMode": "JSON", "filename": "source.json",
         "xpath": "clubs", "mode": 3, "table": "Clubs", "autoLoad": true, "varsPrefix": "C_"}},
        {"name": "rounds", "parameters": {"queryMode": "JSON", "filename": "source.json",
         "xpath": "rounds", "mode": 3, "table": "Rounds", "autoLoad": true,
         "varsPrefix": "R_", "postAction": "Done=R_READER_NUM_RECORDS"}}]})");
    const ChildResult result = run({"run", "scene.json", "--seconds", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("Clubs (2 elements)\n"
                              "index  value\n"
                              "-----  -----\n"
                              "    0  ARS\n"
                              "    1  MCI\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("Rounds (3 elements)\n"
                              "index  value\n"
                              "-----  -----\n"
                              "    0      1\n"
                              "    1      2\n"
                              "    2      3\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("\nDone "), std::string::npos) << result.out;
    EXPECT_EQ(result.err, "");
}

TEST_F(Run, InstancesThatWaitForAButtonLoadNothing) {
    write("scene.json", R"({"instances": [
        {"name": "clubs", "parameters": {"queryMode": "JSON", "filename": "source.json",
         "xpath": "clubs", "mode": 3}}]})");
    const ChildResult result = run({"run", "scene.json", "--frames", "5"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "The store is empty.\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Run, AFailedLoadIsReportedWithItsInstance) {
    write("scene.json", R"({"instances": [
        {"name": "lost", "parameters": {"queryMode": "JSON", "filename": "absent.json",
         "autoLoad": true}}]})");
    const ChildResult result = run({"run", "scene.json", "--seconds", "2"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out,
              "field               value\n"
              "------------------  -----\n"
              "READER_NUM_RECORDS      0\n");
    EXPECT_NE(result.err.find(" s  lost: absent.json was looked for as "), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find(" s  lost: Could not load \"absent.json\"\n"), std::string::npos)
        << result.err;
}

TEST_F(Run, TheStatusIsThatOfTheFirstInstanceWhoseLastLoadDidNotEndWell) {
    const auto statusOf = [&](const std::string& instances) {
        write("scene.json", "{\"instances\": [" + instances + "]}");
        return run({"run", "scene.json", "--frames", "3", "--plugin", ANSWERING_PLUGIN}).status;
    };
    const std::string loaded = R"({"name": "loaded", "parameters": {"script": "A=1;"}})";
    const std::string failed = R"({"name": "failed", "parameters":
        {"console": "READER_NUM_RECORDS=0;lost", "script": "READER_NUM_RECORDS=0;"}})";
    const std::string broken = R"({"name": "broken", "parameters": {"script": "A"}})";
    const std::string unbound = R"({"name": "unbound", "parameters": {"mode": 4}})";
    const std::string recovered = R"({"name": "recovered", "parameters":
        {"console": "READER_NUM_RECORDS=0;lost", "script": "A=1;", "answers": 2,
         "nextConsole": "A=1;"}})";
    EXPECT_EQ(statusOf(loaded + "," + recovered), 0);
    EXPECT_EQ(statusOf(loaded + "," + failed + "," + broken), 1);
    EXPECT_EQ(statusOf(broken + "," + failed), 4);
    EXPECT_EQ(statusOf(unbound), 4);
}

TEST_F(Run, AnInstanceThatLoadsAutomaticallyAndHadNoAnswerIsNamedAndEndsWithThree) {
    write("scene.json", R"({"instances": [
        {"name": "idle", "parameters": {}},
        {"name": "clubs", "parameters": {"queryMode": "JSON", "filename": "source.json",
         "autoLoad": true}}]})");
    const ChildResult result = run({"run", "scene.json", "--frames", "0"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, "The store is empty.\n");
    EXPECT_EQ(result.err, "clubs: no answer yet\n");
}

TEST_F(Run, EveryInstanceIsCleanedUpAtTheEnd) {
    write("scene.json", R"({"instances": [{"name": "a", "parameters": {}},
                                          {"name": "b", "parameters": {}}]})");
    const ChildResult result =
        run({"run", "scene.json", "--frames", "0", "--plugin", ANSWERING_PLUGIN});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "cleaned up\ncleaned up\n");
}
