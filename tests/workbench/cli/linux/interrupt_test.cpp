// What only a system with signals shows: how Ctrl-C ends the workbench.

#include "tests/workbench/cli/Workbench.h"

using Interrupt = Workbench;

TEST_F(Interrupt, EndsARunWithoutLimitsWhichThenShowsTheStore) {
    write("source.json", R"(["ARS", "MCI"])");
    write("scene.json", R"({"instances": [
        {"name": "clubs", "parameters": {"queryMode": "JSON", "filename": "source.json",
         "mode": 3, "table": "Clubs", "autoLoad": true}}]})");
    const ChildResult result = runChild(
        "/usr/bin/timeout",
        {"--preserve-status", "--signal=INT", "4", WORKBENCH, "run", "scene.json"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "Clubs (2 elements)\n"
              "index  value\n"
              "-----  -----\n"
              "    0  ARS\n"
              "    1  MCI\n");
    EXPECT_EQ(result.err, "");
}
