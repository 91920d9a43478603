#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "tests/platform/make_pipe.h"
#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

std::string openError(const std::string& path) {
    EXPECT_EQ(systemPlatform().files.open(path.c_str()), Files::INVALID);
    std::string text;
    EXPECT_TRUE(systemPlatform().diagnostics.lastErrorText(text));
    return text;
}

}  // namespace

TEST(LinuxFiles, AMissingFileIsNamedAsOne) {
    const TempDirectory directory;
    EXPECT_EQ(openError(directory.path() / "missing"), "No such file or directory");
}

TEST(LinuxFiles, ADirectoryIsNamedAsOne) {
    const TempDirectory directory;
    EXPECT_EQ(openError(directory.path()), "Is a directory");
}

TEST(LinuxFiles, APipeIsNotSupported) {
    const TempDirectory directory;
    const std::string pipe = makePipe(directory.path());
    EXPECT_EQ(openError(pipe), "Operation not supported");
}

TEST(LinuxFiles, ADeviceIsNotSupported) {
    EXPECT_EQ(openError("/dev/zero"), "Operation not supported");
}

TEST(LinuxFiles, ALinkIsFollowed) {
    const TempDirectory directory;
    directory.write("file", "abc");
    const std::string link = directory.path() / "link";
    std::filesystem::create_symlink("file", link);
    const Files::Handle file = systemPlatform().files.open(link.c_str());
    ASSERT_NE(file, Files::INVALID);
    uint64_t bytes = 0;
    EXPECT_TRUE(systemPlatform().files.size(file, bytes));
    EXPECT_EQ(bytes, 3U);
    systemPlatform().files.close(file);
}

TEST(LinuxFiles, AFileThatIsRefusedGivesItsHandleBack) {
    const TempDirectory directory;
    const std::string file = directory.write("file", "");
    const Files::Handle before = systemPlatform().files.open(file.c_str());
    systemPlatform().files.close(before);
    openError(directory.path());
    const Files::Handle after = systemPlatform().files.open(file.c_str());
    systemPlatform().files.close(after);
    EXPECT_EQ(after, before);
}

}  // namespace intake
