#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

#include "platform/Platform.h"

namespace intake {

TEST(LinuxDiagnostics, WithoutAnErrorThereIsNoTextAndTheOldTextStays) {
    std::string text = "before";
    errno = 0;
    EXPECT_FALSE(systemPlatform().diagnostics.lastErrorText(text));
    EXPECT_EQ(text, "before");
}

TEST(LinuxDiagnostics, TheLastErrorIsTheSystemsOwnText) {
    std::string text;
    errno = EACCES;
    EXPECT_TRUE(systemPlatform().diagnostics.lastErrorText(text));
    EXPECT_EQ(text, "Permission denied");
}

TEST(LinuxDiagnostics, TheDebuggersOutputIsStandardError) {
    testing::internal::CaptureStderr();
    systemPlatform().diagnostics.debugOutput("ERROR: 100%: gone\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ERROR: 100%: gone\n");
}

TEST(LinuxDiagnostics, ThereIsNoConsoleWindowApartFromStandardOutput) {
    testing::internal::CaptureStdout();
    systemPlatform().diagnostics.writeConsoleWindow("not shown twice");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(LinuxDiagnostics, AProcessWhoseStandardOutputIsClosedHasNoConsole) {
    const int kept = dup(STDOUT_FILENO);
    close(STDOUT_FILENO);
    const bool withoutOutput = systemPlatform().diagnostics.hasConsole();
    dup2(kept, STDOUT_FILENO);
    close(kept);
    EXPECT_FALSE(withoutOutput);
    EXPECT_TRUE(systemPlatform().diagnostics.hasConsole());
}

}  // namespace intake
