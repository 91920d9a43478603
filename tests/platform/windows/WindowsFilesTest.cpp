#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "tests/support/TempDirectory.h"

namespace intake {

TEST(WindowsFiles, AFileIsSharedWithThoseWhoWriteIt) {
    const TempDirectory directory;
    const std::string path = directory.write("file", "abc");
    const std::ofstream before(path, std::ios::app);
    ASSERT_TRUE(before.is_open());

    Files& files = systemPlatform().files;
    const Files::Handle file = files.open(path.c_str());
    ASSERT_NE(file, Files::INVALID);
    const std::ofstream after(path, std::ios::app);
    EXPECT_TRUE(after.is_open());
    files.close(file);
}

}  // namespace intake
