// Documents in UTF-32 are read when a byte order mark says so.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlUtf32 = XmlTest;

std::string utf32(const std::string& ascii, bool bigEndian) {
    std::string bytes;
    for (const char character : ascii) {
        bytes += bigEndian ? std::string{'\0', '\0', '\0', character}
                           : std::string{character, '\0', '\0', '\0'};
    }
    return bytes;
}

TEST_F(XmlUtf32, WithAMarkIsRead) {
    const std::string source = "<?xml version='1.0' encoding='UTF-32'?><a>1</a>";
    EXPECT_TRUE(loadFile(std::string("\xFF\xFE\0\0", 4) + utf32(source, false)));
    EXPECT_EQ(texts("/a"), "1|");
    EXPECT_TRUE(loadFile(std::string("\0\0\xFE\xFF", 4) + utf32(source, true)));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlUtf32, IsReadBeyondTheFirstCharacters) {
    EXPECT_TRUE(loadFile(std::string("\xFF\xFE\0\0", 4) + utf32("<a>", false) +
                         std::string("\xAC\x20\0\0", 4) + utf32("</a>", false)));
    EXPECT_EQ(texts("/a"), "\xE2\x82\xAC|");
}

}  // namespace

}  // namespace intake
