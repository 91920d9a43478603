#include "pipeline/messages.h"

#include <gtest/gtest.h>

#include "tests/fakes/platform/FakeDiagnostics.h"

namespace intake {

namespace {

class ConsoleTest : public testing::Test {
protected:
    /// What `print` leaves on standard output.
    template <class Print>
    std::string standardOutput(Print print) {
        testing::internal::CaptureStdout();
        print();
        return testing::internal::GetCapturedStdout();
    }

    FakeDiagnostics diagnostics_;
};

}  // namespace

TEST_F(ConsoleTest, AMessageReachesTheWindowAndStandardOutput) {
    const std::string output = standardOutput(
        [&] { printToConsole(diagnostics_, "Error %d in %s.\n", 12, "WinHttpReadData"); });
    EXPECT_EQ(diagnostics_.consoleWindowText(), "Error 12 in WinHttpReadData.\n");
    EXPECT_EQ(output, "Error 12 in WinHttpReadData.\n");
}

TEST_F(ConsoleTest, WithoutAStandardOutputNothingIsWritten) {
    diagnostics_.setHasConsole(false);
    const std::string output = standardOutput([&] { printToConsole(diagnostics_, "lost\n"); });
    EXPECT_EQ(diagnostics_.consoleWindowText(), "");
    EXPECT_EQ(output, "");
}

TEST_F(ConsoleTest, AMessageOf1023CharactersFitsTheWindow) {
    const std::string message(1023, 'a');
    standardOutput([&] { printToConsole(diagnostics_, "%s", message.c_str()); });
    EXPECT_EQ(diagnostics_.consoleWindowText(), message);
}

TEST_F(ConsoleTest, ALongerMessageIsCutInTheWindowAndWholeOnStandardOutput) {
    std::string message(1024, 'a');
    message.back() = 'b';
    const std::string output =
        standardOutput([&] { printToConsole(diagnostics_, "%s", message.c_str()); });
    EXPECT_EQ(diagnostics_.consoleWindowText(), std::string(1023, 'a'));
    EXPECT_EQ(output, message);
}

TEST_F(ConsoleTest, PercentSignsInAValueAreText) {
    const std::string output =
        standardOutput([&] { printToConsole(diagnostics_, "%s\n", "100%s %n"); });
    EXPECT_EQ(diagnostics_.consoleWindowText(), "100%s %n\n");
    EXPECT_EQ(output, "100%s %n\n");
}

}  // namespace intake
