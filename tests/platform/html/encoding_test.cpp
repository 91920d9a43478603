// The encoding that a page is read in.

#include "tests/platform/html/HtmlTest.h"

namespace intake {
namespace {

constexpr auto E_ACUTE = "\xC3\xA9";
constexpr auto EURO = "\xE2\x82\xAC";
constexpr auto JAPANESE = "\xE6\x97\xA5\xE6\x9C\xAC";  // the two characters of "Japan"
constexpr auto REPLACED = "\xEF\xBF\xBD";

class HtmlEncoding : public HtmlTest {
protected:
    /// The cell of a page with these bytes in it, behind a start of its own.
    std::string read(const std::string& start, const std::string& bytes) {
        load(start + "<table><tr><td>" + bytes + "</table>");
        return cell();
    }

    /// A page in UTF-16, from ASCII and the cell's bytes.
    static std::string utf16(const std::string& cell, bool bigEndian) {
        const auto wide = [bigEndian](const std::string& ascii) {
            std::string text;
            for (const char each : ascii) {
                text += bigEndian ? std::string{'\0', each} : std::string{each, '\0'};
            }
            return text;
        };
        return (bigEndian ? "\xFE\xFF" : "\xFF\xFE") + wide("<table><tr><td>") + cell +
               wide("</table>");
    }
};

TEST_F(HtmlEncoding, WithoutAnyWordIsUtf8WhereTheBytesAreSuch) {
    EXPECT_EQ(read("", E_ACUTE), E_ACUTE);
    EXPECT_EQ(read("", EURO), EURO);
}

TEST_F(HtmlEncoding, WithoutAnyWordIsWindows1252WhereTheBytesAreNotUtf8) {
    EXPECT_EQ(read("", "\xE9 \x80"), std::string(E_ACUTE) + " " + EURO);
    EXPECT_EQ(read("", "\x81"), "\xC2\x81");
}

TEST_F(HtmlEncoding, IsThatOfAMetaElement) {
    EXPECT_EQ(read("<meta charset=windows-1252>", E_ACUTE), "\xC3\x83\xC2\xA9");
    EXPECT_EQ(read("<META CHARSET='ISO-8859-1'>", "\x80"), EURO);
    EXPECT_EQ(read("<meta charset=Shift_JIS>", "\x93\xFA\x96\x7B"), JAPANESE);
    EXPECT_EQ(
        read("<meta http-equiv='Content-Type' content='text/html; charset=iso-8859-2'>", "\xB9"),
        "\xC5\xA1");
    EXPECT_EQ(read("<meta charset=koi8-r>", "\xC1"), "\xD0\xB0");
    EXPECT_EQ(read("<meta charset=utf-16>", E_ACUTE), E_ACUTE);
}

TEST_F(HtmlEncoding, IsThatOfAPageOfAnyLength) {
    const std::string text(200'000, 'x');
    EXPECT_EQ(read("<meta charset=Shift_JIS>", text + "\x93\xFA\x96\x7B"), text + JAPANESE);
}

TEST_F(HtmlEncoding, IsNamedByTheLabelsOfBrowsersOnly) {
    EXPECT_EQ(read("<meta charset=windows-1251>", "\xE0"), "\xD0\xB0");
    EXPECT_EQ(read("<meta charset=x-cp1251>", "\xE0"), "\xD0\xB0");
    EXPECT_EQ(read("<meta charset=' Latin2 '>", "\xB9"), "\xC5\xA1");
    EXPECT_EQ(read("<meta charset=gb2312>", "\xC8\xD5\xB1\xBE"), JAPANESE);
    for (const char* label : {"utf-7", "wchar_t", "ucs-4", "cp437", "''", "'iso-8859-2 koi8-r'"}) {
        EXPECT_EQ(read("<meta charset=" + std::string(label) + ">", "\xE9"), E_ACUTE) << label;
    }
}

TEST_F(HtmlEncoding, IsNotThatOfAMetaElementFarBehindTheStart) {
    EXPECT_EQ(read("<!-- " + std::string(17000, 'x') + " --><meta charset=koi8-r>", "\xE9"),
              E_ACUTE);
}

TEST_F(HtmlEncoding, KeepsACharacterThatCouldHaveGoneOn) {
    load("<meta charset=windows-1255><table><tr><td>\xE0");
    EXPECT_EQ(cell(), "\xD7\x90");
}

TEST_F(HtmlEncoding, ReplacesACharacterThatIsCutOffAtTheEnd) {
    for (const char* start : {"<meta charset=utf-8>", "<meta charset=shift_jis>"}) {
        load(std::string(start) + "<table><tr><td>a\xE3");
        EXPECT_EQ(cell(), std::string("a") + REPLACED) << start;
    }
}

TEST_F(HtmlEncoding, IsNotWhatOnlyLooksLikeAMetaElement) {
    EXPECT_EQ(read("<!-- <meta charset=koi8-r> -->", "\xE9"), E_ACUTE);
    EXPECT_EQ(read("<script>'<meta charset=koi8-r>'</script>", "\xE9"), E_ACUTE);
    EXPECT_EQ(read("<meta content='text/html; charset=koi8-r'>", "\xE9"), E_ACUTE);
    EXPECT_EQ(read("<meta charset=klingon>", "\xE9"), E_ACUTE);
    EXPECT_EQ(read("<meta charset='UTF-8//IGNORE'>", "\xE9"), E_ACUTE);
}

TEST_F(HtmlEncoding, IsThatOfAByteOrderMarkWhateverElseIsSaid) {
    EXPECT_EQ(read("\xEF\xBB\xBF<meta charset=windows-1252>", E_ACUTE), E_ACUTE);
    load(utf16(std::string("\xE9\x00\xAC\x20", 4), false));
    EXPECT_EQ(cell(), std::string(E_ACUTE) + EURO);
    load(utf16(std::string("\x00\xE9\x20\xAC", 4), true));
    EXPECT_EQ(cell(), std::string(E_ACUTE) + EURO);
}

TEST_F(HtmlEncoding, ReplacesWhatIsNoCharacter) {
    EXPECT_EQ(read("<meta charset=utf-8>",
                   "a\xE9"
                   "b"),
              std::string("a") + REPLACED + "b");
    EXPECT_EQ(read("<meta charset=utf-8>", "\xE2\x82x\xED\xA0\x80"),
              std::string(REPLACED) + "x" + REPLACED + REPLACED + REPLACED);
    EXPECT_EQ(read("<meta charset=euc-jp>",
                   "a\xFF"
                   "b"),
              std::string("a") + REPLACED + "b");
}

TEST_F(HtmlEncoding, ReplacesHalvesOfPairsInUtf16AndNothingElse) {
    load(utf16(std::string("a\0\x00\xD8"
                           "b\0\x00\xDC\xE9\x00",
                           10),
               false));
    EXPECT_EQ(cell(), std::string("a") + REPLACED + "b" + REPLACED + E_ACUTE);
    load(utf16(std::string("\xD8\x00\x20\xAC", 4), true));
    EXPECT_EQ(cell(), std::string(REPLACED) + EURO);
    const std::string page = utf16(std::string("x\0", 2), false);
    load(page.substr(0, page.find('x') + 2) + "a");
    EXPECT_EQ(cell(), std::string("x") + REPLACED);
}

TEST_F(HtmlEncoding, IsThatOfTheFirstMetaElementWithALabelThatBrowsersKnow) {
    EXPECT_EQ(read("<meta charset=foo><meta charset=windows-1251>", "\xE0"), "\xD0\xB0");
    EXPECT_EQ(read("<meta charset=koi8-r><meta charset=windows-1251>", "\xC1"), "\xD0\xB0");
}

TEST_F(HtmlEncoding, OfOneByteACharacterIsReadByteByByte) {
    EXPECT_EQ(read("<meta charset=windows-1258>",
                   "A\x8D"
                   "z"),
              "A\xC2\x8Dz");
    EXPECT_EQ(read("<meta charset=windows-1258>", "A\xCC"), "A\xCC\x80");  // A and an accent
    EXPECT_EQ(read("<meta charset=windows-1255>", "\xE0\xFBx"),
              std::string("\xD7\x90") + REPLACED + "x");
    EXPECT_EQ(read("<meta charset=windows-1253>", "\x81\xAA\xE1"),
              std::string("\xC2\x81") + REPLACED + "\xCE\xB1");
}

TEST_F(HtmlEncoding, OfChinesePagesHasTheEuroSignInOneByte) {
    EXPECT_EQ(read("<meta charset=gbk>", "a\x80 \xC8\xD5\x80"),
              "a" + std::string(EURO) + " \xE6\x97\xA5" + EURO);
    EXPECT_EQ(read("<meta charset=gbk>", "\xFFx"), std::string(REPLACED) + "x");
}

TEST_F(HtmlEncoding, IsThatOfAnXmlDeclarationBehindWhatAMetaElementSays) {
    EXPECT_EQ(read("<?xml version='1.0' encoding = \"windows-1251\" ?>", "\xE0"), "\xD0\xB0");
    EXPECT_EQ(read("<?xml encoding='koi8-r'?>", "\xC1"), "\xD0\xB0");
    EXPECT_EQ(read("<?xml encoding='koi8-r'?><meta charset=windows-1251>", "\xE0"), "\xD0\xB0");
    EXPECT_EQ(read("<?xml encoding='utf-16'?>", E_ACUTE), E_ACUTE);
}

TEST_F(HtmlEncoding, IsNotWhatOnlyLooksLikeAnXmlDeclaration) {
    for (const char* start :
         {" <?xml encoding='koi8-r'?>", "<?xml encoding='klingon'?>", "<?xml encoding=koi8-r?>",
          "<?xml encoding'koi8-r'?>", "<?xml encoding='koi8-r?>", "<?xml version='1.0'?>",
          "<?xml ?><p encoding='koi8-r'>"}) {
        EXPECT_EQ(read(start, "\xE9"), E_ACUTE) << start;
    }
}

TEST_F(HtmlEncoding, LeavesOutCharactersThatAreZero) {
    EXPECT_EQ(read("", std::string("a\0b", 3)), "ab");
}

}  // namespace
}  // namespace intake
