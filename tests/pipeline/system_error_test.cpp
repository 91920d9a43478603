#include "pipeline/messages.h"

#include <gtest/gtest.h>

#include <thread>

#include "tests/fakes/platform/FakeDiagnostics.h"

namespace intake {

TEST(SystemError, ThePrefixAndTheSystemsTextGoToTheDebuggersOutput) {
    FakeDiagnostics diagnostics;
    diagnostics.setLastError("Access is denied.");
    reportSystemError(diagnostics, "Opening the log");
    EXPECT_EQ(diagnostics.debugText(), "ERROR: Opening the log: Access is denied.\n");
}

TEST(SystemError, WithoutATextForTheErrorNothingIsReported) {
    FakeDiagnostics diagnostics;
    reportSystemError(diagnostics, "Opening the log");
    EXPECT_EQ(diagnostics.debugText(), "");
}

TEST(SystemError, TheErrorIsThatOfTheCallingThread) {
    FakeDiagnostics diagnostics;
    diagnostics.setLastError("mine");
    std::thread([&] {
        diagnostics.setLastError("theirs");
        reportSystemError(diagnostics, "Worker");
    }).join();
    EXPECT_EQ(diagnostics.debugText(), "ERROR: Worker: theirs\n");
}

TEST(SystemError, ALongTextIsCutAt1023Characters) {
    FakeDiagnostics diagnostics;
    diagnostics.setLastError(std::string(2000, 'x'));
    reportSystemError(diagnostics, "P");
    EXPECT_EQ(diagnostics.debugText(), "ERROR: P: " + std::string(1013, 'x'));
}

TEST(SystemError, PercentSignsAreText) {
    FakeDiagnostics diagnostics;
    diagnostics.setLastError("100%s");
    reportSystemError(diagnostics, "%d");
    EXPECT_EQ(diagnostics.debugText(), "ERROR: %d: 100%s\n");
}

}  // namespace intake
