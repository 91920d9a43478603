#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "platform/Platform.h"

namespace intake {

namespace {

std::string systemTime() {
    const std::time_t now = std::time(nullptr);
    char text[32];
    std::strftime(text, sizeof text, "%Y %m %d %H %M", std::localtime(&now));
    return text;
}

std::string clockTime() {
    const LocalTime now = systemPlatform().clock.localTime();
    char text[80];
    std::snprintf(text, sizeof text, "%d %02d %02d %02d %02d", now.year, now.month, now.day,
                  now.hour, now.minute);
    return text;
}

}  // namespace

TEST(LinuxClock, TheLocalTimeIsThatOfTheUsersTimeZone) {
    const std::string before = systemTime();
    const std::string now = clockTime();
    const std::string after = systemTime();
    EXPECT_TRUE(now == before || now == after) << now << " is not " << before;
}

}  // namespace intake
