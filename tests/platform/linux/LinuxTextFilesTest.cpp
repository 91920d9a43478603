// Who can read a text file, and what is never written to.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Platform.h"
#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

class LinuxTextFiles : public testing::Test {
protected:
    static std::unique_ptr<TextFile> create(const std::string& path) {
        return systemPlatform().textFiles.create(path);
    }

    static mode_t modeOf(const std::string& path) {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_mode & 0777;
    }

    TempWorkingDirectory directory_;
};

TEST_F(LinuxTextFiles, AreForTheirOwnersEyesAlone) {
    const mode_t former = umask(0);
    EXPECT_NE(create("new"), nullptr);
    umask(former);
    EXPECT_EQ(modeOf("new"), 0600U);

    directory_.write("old", "text");
    chmod("old", 0666);
    EXPECT_NE(create("old"), nullptr);
    EXPECT_EQ(modeOf("old"), 0600U);
}

TEST_F(LinuxTextFiles, FollowNoLink) {
    directory_.write("target", "precious");
    ASSERT_EQ(symlink("target", "soft"), 0);
    ASSERT_EQ(link("target", "hard"), 0);
    ASSERT_EQ(symlink("nowhere", "dangling"), 0);

    for (const char* const name : {"soft", "hard", "dangling"}) {
        EXPECT_EQ(create(name), nullptr) << name;
    }
    struct stat status {};
    EXPECT_EQ(stat("target", &status), 0);
    EXPECT_EQ(status.st_size, 8);
    EXPECT_NE(access("nowhere", F_OK), 0);
}

TEST_F(LinuxTextFiles, AreNoPipesAndNoFolders) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(create("pipe"), nullptr);
    EXPECT_EQ(create("."), nullptr);
}

}  // namespace

}  // namespace intake
