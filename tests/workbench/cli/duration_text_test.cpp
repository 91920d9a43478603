#include "workbench/cli/run/duration_text.h"

#include <gtest/gtest.h>

using workbench::calmDurationText;
using workbench::durationText;

TEST(DurationText, HasTwoDigitsOrSo) {
    EXPECT_EQ(durationText(0), "0 ms");
    EXPECT_EQ(durationText(0.04), "40 ms");
    EXPECT_EQ(durationText(0.9996), "1.0 s");
    EXPECT_EQ(durationText(9.94), "9.9 s");
    EXPECT_EQ(durationText(9.96), "10 s");
    EXPECT_EQ(durationText(99.6), "2 min");
    EXPECT_EQ(durationText(5960), "99 min");
    EXPECT_EQ(durationText(7200), "2 h");
    EXPECT_EQ(durationText(200'000), "2 d");
}

TEST(DurationText, ThatIsCalmChangesOnceASecond) {
    EXPECT_EQ(calmDurationText(0.9), "0 s");
    EXPECT_EQ(calmDurationText(3.99), "3 s");
    EXPECT_EQ(calmDurationText(240), "4 min");
}
