#include "workbench/cli/serve/SceneOnDisk.h"

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>

#include "tests/support/TempDirectory.h"

using workbench::SceneContent;
using workbench::SceneOnDisk;

namespace {

/// Looks at a file when the test says so, as a disk that answers late does.
class SceneOnDiskTest : public testing::Test {
protected:
    SceneOnDiskTest() { disk.follow(file.string(), SceneContent("opened")); }

    void write(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }

    void look() {
        ASSERT_FALSE(looks.empty());
        looks.front()();
        looks.pop_front();
    }

    std::string seen() const {
        return disk.content().text == nullptr ? disk.content().stamp : *disk.content().text;
    }

    const intake::TempDirectory folder;
    const std::filesystem::path file = folder.path() / "on_disk.json";
    std::deque<std::function<void()>> looks;  // that were begun
    SceneOnDisk disk{[this](std::function<void()> job) {
        looks.push_back(std::move(job));
        return true;
    }};
};

}  // namespace

TEST_F(SceneOnDiskTest, TakesOverInAFrameWhatALookHasSeen) {
    write("changed");
    EXPECT_FALSE(disk.runFrame(1));
    look();
    EXPECT_EQ(seen(), "opened");
    EXPECT_TRUE(disk.runFrame(1.02));
    EXPECT_EQ(seen(), "changed");
}

TEST_F(SceneOnDiskTest, IsNoOtherWithTheSameContent) {
    write("opened");
    disk.runFrame(1);
    look();
    EXPECT_FALSE(disk.runFrame(1.02));
}

TEST_F(SceneOnDiskTest, TellsThatTheFileIsGone) {
    std::filesystem::remove(file);
    disk.runFrame(1);
    look();
    EXPECT_TRUE(disk.runFrame(1.02));
    EXPECT_EQ(seen(), "missing");
}

TEST_F(SceneOnDiskTest, LooksTwiceASecond) {
    disk.runFrame(1);
    look();
    disk.runFrame(1.4);
    EXPECT_TRUE(looks.empty());
    disk.runFrame(1.5);
    EXPECT_EQ(looks.size(), 1U);
}

TEST_F(SceneOnDiskTest, BeginsNoOtherLookWhileADiskDoesNotAnswer) {
    for (int second = 1; second < 10; ++second)
        EXPECT_FALSE(disk.runFrame(second));
    EXPECT_EQ(looks.size(), 1U);
}

TEST_F(SceneOnDiskTest, FollowsAnotherFileWhileADiskDoesNotAnswer) {
    disk.runFrame(1);
    disk.follow(file.string() + ".other", SceneContent("other"));
    disk.runFrame(2);
    EXPECT_EQ(looks.size(), 2U);
}

TEST_F(SceneOnDiskTest, ForgetsWhatWasSeenBeforeItWasSaved) {
    write("before");
    disk.runFrame(1);
    look();
    disk.follow(file.string(), SceneContent("saved"));
    EXPECT_FALSE(disk.runFrame(1.02));
    EXPECT_EQ(seen(), "saved");
}

TEST_F(SceneOnDiskTest, LooksAtNothingWithoutAFile) {
    disk.follow("", SceneContent(std::nullopt));
    disk.runFrame(1);
    EXPECT_TRUE(looks.empty());
}
