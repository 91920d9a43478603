#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/TempDirectory.h"
#include "tests/workbench/probe/fetch_support.h"

namespace probe {

TEST(FetchedSpecialFile, ThatIsAPipeIsNotWaitedFor) {
    const intake::TempDirectory directory;
    const std::string pipe = (directory.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, pipe));
    EXPECT_STREQ(failure.what(), "is no file but a pipe or a device");
}

TEST(FetchedSpecialFile, ThatMayNotBeReadIsSaidToBeSo) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    const intake::TempDirectory directory;
    const std::string file = directory.write("a.json", "[1]");
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, file));
    EXPECT_STREQ(failure.what(), "cannot be opened; you may not be allowed to read it");
}

}  // namespace probe
