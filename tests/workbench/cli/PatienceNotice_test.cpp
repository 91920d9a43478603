#include "workbench/cli/PatienceNotice.h"

#include <gtest/gtest.h>

using workbench::PatienceNotice;

namespace {

std::string shownAt(PatienceNotice& notice, double elapsedSeconds) {
    testing::internal::CaptureStderr();
    notice.show(elapsedSeconds);
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(PatienceNotice, IsSilentWithoutATerminal) {
    PatienceNotice notice(false, 60);
    EXPECT_EQ(shownAt(notice, 2), "");
}

TEST(PatienceNotice, ComesOnceAndOnlyAfterASecond) {
    PatienceNotice notice(true, 60);
    EXPECT_EQ(shownAt(notice, 0.98), "");
    EXPECT_EQ(shownAt(notice, 1), "Still loading; waiting 60 seconds at most.\n");
    EXPECT_EQ(shownAt(notice, 1.02), "");
}
