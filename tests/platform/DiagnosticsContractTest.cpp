#include <thread>

#include "tests/platform/PlatformFixture.h"

namespace intake {

using DiagnosticsContract = PlatformContract;

INSTANTIATE_TEST_SUITE_P(Platforms, DiagnosticsContract, testing::ValuesIn(BOTH_PLATFORMS),
                         fixtureName);

TEST_P(DiagnosticsContract, TheLastErrorTextStaysUntilTheNextError) {
    files_.open(fixture_->missing().c_str());
    const std::string first = lastErrorText();
    EXPECT_NE(first, "");
    EXPECT_EQ(lastErrorText(), first);

    files_.open(fixture_->directory().c_str());
    EXPECT_NE(lastErrorText(), first);
}

TEST_P(DiagnosticsContract, TheLastErrorBelongsToTheThreadThatMadeIt) {
    files_.open(fixture_->missing().c_str());
    const std::string mine = lastErrorText();
    const std::string directory = fixture_->directory();
    std::string theirs;
    std::thread([&] {
        files_.open(directory.c_str());
        theirs = lastErrorText();
    }).join();
    EXPECT_NE(theirs, "");
    EXPECT_NE(theirs, mine);
    EXPECT_EQ(lastErrorText(), mine);
}

TEST_P(DiagnosticsContract, AProcessWithAStandardOutputHasAConsole) {
    EXPECT_TRUE(diagnostics_.hasConsole());
}

}  // namespace intake
