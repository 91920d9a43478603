#include "tests/platform/PlatformFixture.h"

namespace intake {

using ClockContract = PlatformContract;

INSTANTIATE_TEST_SUITE_P(Platforms, ClockContract, testing::ValuesIn(BOTH_PLATFORMS), fixtureName);

TEST_P(ClockContract, TheMillisecondsNeverGoBack) {
    double before = clock_.milliseconds();
    for (int i = 0; i < 10000; ++i) {
        const double now = clock_.milliseconds();
        ASSERT_GE(now, before);
        before = now;
    }
}

TEST_P(ClockContract, TheMillisecondsDoNotGoBackAcrossASleep) {
    const double before = clock_.milliseconds();
    clock_.sleep(std::chrono::milliseconds(1));
    EXPECT_GE(clock_.milliseconds(), before);
}

TEST_P(ClockContract, TheLocalTimeCountsMonthsAndDaysFromOneAndHoursAndMinutesFromZero) {
    const LocalTime now = clock_.localTime();
    EXPECT_GE(now.year, 2024);
    EXPECT_TRUE(now.month >= 1 && now.month <= 12) << now.month;
    EXPECT_TRUE(now.day >= 1 && now.day <= 31) << now.day;
    EXPECT_TRUE(now.hour >= 0 && now.hour <= 23) << now.hour;
    EXPECT_TRUE(now.minute >= 0 && now.minute <= 59) << now.minute;
}

}  // namespace intake
