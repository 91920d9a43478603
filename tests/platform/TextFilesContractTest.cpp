#include <fstream>
#include <sstream>

#include "platform/Platform.h"
#include "tests/platform/PlatformFixture.h"
#include "tests/support/TempDirectory.h"

namespace intake {

class TextFilesContract : public testing::Test {
protected:
    std::unique_ptr<TextFile> create(const std::string& name) {
        return systemPlatform().textFiles.create(pathOf(name));
    }

    std::string pathOf(const std::string& name) { return (directory_.path() / name).string(); }

    /// Line ends are the system's.
    std::string contentOf(const std::string& name) {
        std::ostringstream content;
        content << std::ifstream(pathOf(name)).rdbuf();
        return content.str();
    }

    TempDirectory directory_;
};

TEST_F(TextFilesContract, ATextIsInTheFileAtOnce) {
    const auto file = create("log");
    ASSERT_NE(file, nullptr);

    file->append("first\n");
    EXPECT_EQ(contentOf("log"), "first\n");
    file->append("");
    file->append("second\n");
    EXPECT_EQ(contentOf("log"), "first\nsecond\n");
}

TEST_F(TextFilesContract, AFileThatIsThereIsEmptied) {
    directory_.write("log", "of yesterday");

    const auto file = create("log");
    ASSERT_NE(file, nullptr);

    EXPECT_EQ(contentOf("log"), "");
}

TEST_F(TextFilesContract, TwoOfOneNameKeepEachOthersLines) {
    const auto first = create("log");
    first->append("lost when the second is made\n");
    const auto second = create("log");

    second->append("second\n");
    first->append("first\n");
    second->append("second again\n");

    EXPECT_EQ(contentOf("log"), "second\nfirst\nsecond again\n");
}

TEST_F(TextFilesContract, NoneIsMadeInAFolderThatIsMissing) {
    EXPECT_EQ(create("missing/log"), nullptr);
}

}  // namespace intake
