// Which numbers are dates, by the formats of their cells.

#include "formats/workbook/cell_text.h"
#include "formats/workbook/number_format.h"
#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookDates = WorkbookTest;

constexpr auto ALL = "SELECT * FROM [S$];";

/// Styles: 0 plain, 1 a built-in date, 2 a format of the workbook's own, 3 a built-in number.
TestBook book(const std::string& code, const std::string& rows) {
    return TestBook()
        .styles("<numFmts count='1'><numFmt numFmtId='164' formatCode='" + code +
                "'/></numFmts><cellStyleXfs><xf numFmtId='14'/></cellStyleXfs><cellXfs>"
                "<xf numFmtId='0'/><xf numFmtId='14'/><xf numFmtId='164'/><xf numFmtId='10'/>"
                "</cellXfs>")
        .sheet("S", "<row><c t='str'><v>A</v></c></row>" + rows);
}

TEST_F(WorkbookDates, AreNumbersInABuiltInDateFormat) {
    EXPECT_EQ(rows(book("0", "<row><c s='1'><v>45000.75</v></c></row>"), ALL),
              "A\ndate 45000.75\n");
}

TEST_F(WorkbookDates, AreNumbersInADateFormatOfTheWorkbook) {
    EXPECT_EQ(rows(book("dd/mm/yyyy", "<row><c s='2'><v>45000</v></c></row>"), ALL),
              "A\ndate 45000\n");
}

TEST_F(WorkbookDates, AreNotNumbersInOtherFormats) {
    EXPECT_EQ(rows(book("0.00",
                        "<row><c s='0'><v>1</v></c></row><row><c s='2'><v>2</v></c></row>"
                        "<row><c s='3'><v>0.5</v></c></row><row><c><v>4</v></c></row>"
                        "<row><c s='99'><v>5</v></c></row>"),
                   ALL),
              "A\n1\n2\n0.5\n4\n5\n");
}

TEST_F(WorkbookDates, BesideTextsAndBlanksStayDates) {
    EXPECT_EQ(rows(book("0",
                        "<row><c s='1'><v>45000</v></c></row><row/>"
                        "<row><c t='str' s='1'><v>to be announced</v></c></row>"),
                   ALL),
              "A\ndate 45000\n-\n'to be announced'\n");
}

TEST_F(WorkbookDates, BesidePlainNumbersAreNumbersSoThatNoneIsLost) {
    EXPECT_EQ(
        rows(book("0", "<row><c s='1'><v>45000</v></c></row><row><c><v>12</v></c></row>"), ALL),
        "A\n45000\n12\n");
}

TEST_F(WorkbookDates, OfAWorkbookThatCountsFrom1904AreShifted) {
    EXPECT_EQ(rows(book("0", "<row><c s='1'><v>43538</v></c></row>").from1904(), ALL),
              "A\ndate 45000\n");
    EXPECT_EQ(rows(book("0", "<row><c><v>43538</v></c></row>").from1904(), ALL), "A\n43538\n");
}

TEST_F(WorkbookDates, CanBeWrittenInTheirIsoForm) {
    EXPECT_EQ(rows(book("0",
                        "<row><c t='d'><v>2023-03-15</v></c></row>"
                        "<row><c t='d'><v>2023-03-15T18:00:00Z</v></c></row>"
                        "<row><c t='d'><v>06:00</v></c></row>"),
                   ALL),
              "A\ndate 45000\ndate 45000.75\ndate 0.25\n");
    EXPECT_EQ(rows(book("0", "<row><c t='d'><v>soon</v></c></row>"), ALL), "A\n'soon'\n");
}

TEST_F(WorkbookDates, BecomeTextByTheFunctionsOfSqlite) {
    EXPECT_EQ(rows(book("0", "<row><c s='1'><v>45000.75</v></c></row>"),
                   "SELECT strftime('%d.%m.%Y', A + 2415018.5) AS day, "
                   "strftime('%H:%M', A + 2415018.5) AS time FROM [S$]"),
              "day|time\n'15.03.2023'|'18:00'\n");
}

TEST_F(WorkbookDates, ThatAreComputedAreNumbers) {
    EXPECT_EQ(rows(book("0", "<row><c s='1'><v>45000</v></c></row>"),
                   "SELECT A + 1 AS next, A FROM [S$]"),
              "next|A\n45001|date 45000\n");
}

TEST_F(WorkbookDates, CountFrom1904OnlyWhereTheirFormatShowsADay) {
    for (const char* const code : {"[mm]:ss", "[h]:mm", "hh:mm", "mm:ss", "s.00"}) {
        EXPECT_EQ(rows(book(code, "<row><c s='2'><v>0.0625</v></c></row>").from1904(), ALL),
                  "A\ndate 0.0625\n")
            << code;
    }
    for (const char* const code :
         {"yyyy", "d hh:mm", "mmm", "yyyy-mm-dd", "[h]:mm dd/mm/yyyy", "h:mm mmmm"}) {
        EXPECT_EQ(rows(book(code, "<row><c s='2'><v>0.5</v></c></row>").from1904(), ALL),
                  "A\ndate 1462.5\n")
            << code;
    }
}

TEST(DateFormats, HoldALetterOfADateOrTime) {
    for (const char* const code :
         {"yyyy-mm-dd", "d/m", "h:mm AM/PM", "mm:ss.0", "[h]:mm", "[mm]:ss", "[$-409]d-mmm-yy;@",
          "[Red]dd\\.mm", "\"on \"dddd", "[$-F800]dddd\\,\\ mmmm", "MMMM", "_-yy", "ss"}) {
        EXPECT_NE(dateFormatOf(code), DateFormat::NONE) << code;
    }
}

TEST(DateFormats, AreNotThoseOfNumbersAndTexts) {
    for (const char* const code :
         {"General", "GENERAL", "0", "#,##0.00", "0%", "0.00E+00", "@", "[Red]0;[Blue]-0",
          "0\" days\"", "0\\d", "[$EUR-407] #,##0", "_d0", "*d0", "# ?/?", "0;\"d\";yyyy", "",
          "\"unclosed d", "[unclosed d", "[]0"}) {
        EXPECT_EQ(dateFormatOf(code), DateFormat::NONE) << code;
    }
}

TEST(DateFormats, ThatAreBuiltInHaveTheseNumbers) {
    std::string dates;
    for (size_t number = 0; number < 100; ++number) {
        dates += builtInDateFormat(number) != DateFormat::NONE ? std::to_string(number) + " " : "";
    }
    EXPECT_EQ(dates,
              "14 15 16 17 18 19 20 21 22 27 28 29 30 31 32 33 34 35 36 45 46 47 50 51 52 53 "
              "54 55 56 57 58 ");
}

TEST(DateFormats, ThatAreBuiltInShowTimesOfDayByTheseNumbers) {
    std::string times;
    for (size_t number = 0; number < 100; ++number) {
        times += builtInDateFormat(number) == DateFormat::TIME ? std::to_string(number) + " " : "";
    }
    EXPECT_EQ(times, "18 19 20 21 32 33 45 46 47 ");
}

TEST(IsoDates, AreReadAndWritten) {
    EXPECT_EQ(parseIsoDate("1900-03-01"), 61);
    EXPECT_EQ(parseIsoDate("2024-02-29T12:00:00.000"), 45351.5);
    EXPECT_EQ(parseIsoDate("2023-02-29"), std::nullopt);
    EXPECT_EQ(parseIsoDate("12:61"), std::nullopt);
    EXPECT_EQ(parseIsoDate("2024-01-01T"), std::nullopt);
    EXPECT_EQ(isoDate(45351), "2024-02-29");
    EXPECT_EQ(isoDate(45351.5), "2024-02-29 12:00:00");
    EXPECT_EQ(isoDate(45351.9999999), "2024-03-01");
    EXPECT_EQ(isoDate(-1), "-1");
    EXPECT_EQ(isoDate(3e6), "3e+06");
}

}  // namespace

}  // namespace intake
