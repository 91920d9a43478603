#include "formats/text/ascii.h"

#include <gtest/gtest.h>

#include "formats/text/trim.h"

namespace intake {
namespace {

TEST(AsciiCase, IsThatOfLettersAndOfNothingElse) {
    EXPECT_EQ(lowerCase("AZ az 09 @[`{ \xC3\x84"), "az az 09 @[`{ \xC3\x84");
    EXPECT_TRUE(equalIgnoringCase("Driver", "DRIVER"));
    EXPECT_TRUE(equalIgnoringCase("", ""));
    EXPECT_FALSE(equalIgnoringCase("Driver", "Drive"));
    EXPECT_FALSE(equalIgnoringCase("@", "`"));
    EXPECT_FALSE(equalIgnoringCase("\xC3\x84", "\xC3\xA4"));  // Ä and ä
}

TEST(AsciiCase, DoesNotCountInAStart) {
    EXPECT_TRUE(startsWithIgnoringCase("FILE:/a", "file:"));
    EXPECT_TRUE(startsWithIgnoringCase("a", ""));
    EXPECT_FALSE(startsWithIgnoringCase("FIL", "file:"));
}

TEST(AsciiCharacters, AreLettersAndDigits) {
    EXPECT_TRUE(isLetter('a') && isLetter('Z') && isDigit('0') && isDigit('9'));
    EXPECT_FALSE(isLetter('@') || isLetter('[') || isLetter('`') || isLetter('{'));
    EXPECT_FALSE(isDigit('/') || isDigit(':') || isLetter('\xE4') || isAscii('\x80'));
}

TEST(Trimmed, TakesBlanksFromTheEndsOnly) {
    EXPECT_EQ(trimmed(" \t a b\r\n", XML_SPACE), "a b");
    EXPECT_EQ(trimmedStart(" a ", " "), "a ");
    EXPECT_EQ(trimmedEnd(" a ", " "), " a");
    EXPECT_EQ(trimmed(" \t", XML_SPACE), "");
    EXPECT_EQ(trimmed("", " "), "");
    EXPECT_EQ(trimmed("\ta\t", " "), "\ta\t");
}

}  // namespace
}  // namespace intake
