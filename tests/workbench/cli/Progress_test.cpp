#include "workbench/cli/Progress.h"

#include <gtest/gtest.h>

using workbench::Progress;

TEST(Progress, IsSilentWithoutATerminal) {
    testing::internal::CaptureStderr();
    {
        Progress progress(false, "Loading league.json");
        progress.show(1);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Progress, DrawsItsLineAgainOnlyWhenItChanges) {
    testing::internal::CaptureStderr();
    Progress progress(true, "Loading league.json");
    progress.show(1.01);
    progress.show(1.02);
    progress.show(1.2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "\r\033[KLoading league.json … 1.0 s\r\033[KLoading league.json … 1.2 s");
}

TEST(Progress, LeavesNothingBehind) {
    Progress progress(true, "Loading league.json");
    testing::internal::CaptureStderr();
    progress.show(1);
    progress.clear();
    progress.clear();
    EXPECT_TRUE(testing::internal::GetCapturedStderr().ends_with("1.0 s\r\033[K"));
}
