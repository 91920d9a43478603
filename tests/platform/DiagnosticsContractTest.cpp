#include <atomic>
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
    // Starting and ending a thread may set the starter's last error.
    const std::string directory = fixture_->directory();
    std::string theirs;
    std::atomic<bool> mineIsMade = false, theirsIsMade = false;
    std::thread other([&] {
        while (!mineIsMade) {
        }
        files_.open(directory.c_str());
        theirs = lastErrorText();
        theirsIsMade = true;
    });
    files_.open(fixture_->missing().c_str());
    const std::string mine = lastErrorText();
    mineIsMade = true;
    while (!theirsIsMade) {
    }
    const std::string mineStill = lastErrorText();
    other.join();
    EXPECT_NE(theirs, "");
    EXPECT_NE(theirs, mine);
    EXPECT_EQ(mineStill, mine);
}

TEST_P(DiagnosticsContract, AProcessWithAStandardOutputHasAConsole) {
    EXPECT_TRUE(diagnostics_.hasConsole());
}

}  // namespace intake
