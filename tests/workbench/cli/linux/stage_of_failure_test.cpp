#include "workbench/cli/run/stage_of_failure.h"

#include <gtest/gtest.h>

using workbench::stageOfFailure;

TEST(StageOfFailure, IsTheFirstThatFailedWithItsCause) {
    EXPECT_EQ(stageOfFailure(R"({"ok": false, "stages": [
                  {"stage": "settings", "state": "ok", "cause": ""},
                  {"stage": "address", "state": "failed", "cause": "There is no such file."},
                  {"stage": "format", "state": "failed", "cause": "x"}]})"),
              "address: There is no such file.");
}

TEST(StageOfFailure, IsNoneWhereTheSourceIsRightlyEmpty) {
    EXPECT_EQ(stageOfFailure(R"({"stages": [{"stage": "settings", "state": "ok", "cause": ""}]})"),
              "the source is there and has nothing");
}

TEST(StageOfFailure, IsTheSelectionWhereAQueryWasNotRun) {
    EXPECT_EQ(stageOfFailure(R"({"ok": true, "records": 0, "stages": [
                  {"stage": "selection", "state": "warning", "cause": "It is not certain."},
                  {"stage": "key", "state": "skipped", "cause": ""}]})"),
              "selection: It is not certain.");
}

TEST(StageOfFailure, IsNoneOfASourceThatHasRecovered) {
    EXPECT_EQ(stageOfFailure(R"({"ok": true, "records": 3, "stages": [
                  {"stage": "settings", "state": "ok", "cause": ""}]})"),
              "");
}

TEST(StageOfFailure, IsNotKnownOfWhatIsNoExplanation) {
    for (const char* text : {"", "{", "[]", "7", R"({"stages": []})"})
        EXPECT_EQ(stageOfFailure(text).find("address"), std::string::npos) << text;
    EXPECT_EQ(stageOfFailure(""), "");
    EXPECT_EQ(stageOfFailure("[]"), "");
}
