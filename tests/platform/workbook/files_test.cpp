// Which files are workbooks, and what is said of those that are not.

#include <sys/stat.h>

#include <array>

#include "platform/PlatformError.h"
#include "tests/platform/workbook/WorkbookTest.h"
#include "tests/support/linux/next_handle.h"

namespace intake {

namespace {

using WorkbookFiles = WorkbookTest;

constexpr auto ALL = "SELECT * FROM [S$];";
const std::string UNREADABLE = "The workbook \"PATH\" cannot be read: ";
const std::string COMPOUND_FILE("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0", 10);

TestBook book(const std::string& rows = "<row><c><v>1</v></c></row>") {
    return TestBook().sheet("S", rows);
}

std::string wide(const std::string& name) {
    std::string text;
    for (const char character : name) {
        text += character;
        text += '\0';
    }
    return text;
}

TEST_F(WorkbookFiles, CanBePackedInAnyWay) {
    EXPECT_EQ(rows(book(), ALL), "1\n");
    EXPECT_EQ(rows(book().zip({.stored = true}), ALL), "1\n");
    EXPECT_EQ(rows(book().zip({.zip64 = true}), ALL), "1\n");
}

TEST_F(WorkbookFiles, CanHaveACommentAtTheirEnd) {
    std::string bytes = book().bytes();
    bytes[bytes.size() - 2] = 5;
    EXPECT_EQ(rows(bytes + "hello", ALL), "1\n");
}

TEST_F(WorkbookFiles, CanHaveSomethingBehindTheirEnd) {
    const std::string whole = book("<row><c><v>1</v></c></row>").bytes();
    for (const std::string& more : {std::string("x"), std::string(60'000, '\0'),
                                    std::string("PK\x05\x06") + std::string(18, '\xFF')}) {
        EXPECT_EQ(rows(whole + more, ALL), "1\n") << more.size();
    }
    EXPECT_EQ(openError(whole + std::string(70'000, ' ')),
              UNREADABLE + "it has no zip directory; the file may be incomplete");
}

TEST_F(WorkbookFiles, NeedNeitherStylesNorSharedTexts) {
    header_ = "NO";
    EXPECT_EQ(rows(book("<row><c s='3'><v>1</v></c></row>").without("xl/styles.xml"), ALL),
              "F1\n1\n");
}

TEST_F(WorkbookFiles, AreClosedAgainWhetherTheyAreWorkbooksOrNot) {
    const int before = nextHandle();
    rows(book(), ALL);
    openError("no workbook");
    openError(book().without("xl/workbook.xml"));
    EXPECT_EQ(nextHandle(), before);
}

TEST_F(WorkbookFiles, ThatAreMissingAreNamed) {
    ProviderConnection connection(endMark_);
    try {
        connection.open(connectionString("/no/such/book.xlsx"));
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.description(),
                  "The workbook \"/no/such/book.xlsx\" cannot be read: "
                  "No such file or directory");
        EXPECT_EQ(error.code(), 0x80004005);
        ASSERT_EQ(connection.errors().size(), 1U);
        EXPECT_EQ(connection.errors()[0].number, 0x80004005);
        EXPECT_EQ(connection.errors()[0].description, error.description());
    }
}

TEST_F(WorkbookFiles, AreNeitherDirectoriesNorPipes) {
    const std::string path = (directory_.path() / "book.xlsx").string();
    ProviderConnection connection(endMark_);
    EXPECT_THROW(connection.open(connectionString(directory_.path().string())), PlatformError);
    EXPECT_EQ(connection.errors()[0].description,
              "The workbook \"" + directory_.path().string() + "\" cannot be read: Is a directory");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THROW(connection.open(connectionString(path)), PlatformError);
    EXPECT_EQ(withoutPath(connection.errors()[0].description),
              UNREADABLE + "it is not a regular file");
}

TEST_F(WorkbookFiles, ThatAreEncryptedAreRefused) {
    EXPECT_EQ(openError(COMPOUND_FILE + std::string(600, 0) + wide("EncryptedPackage")),
              UNREADABLE + "it is encrypted; save it without a password");
    EXPECT_EQ(openError(book().zip({.encrypted = true})),
              UNREADABLE +
                  "its part \"_rels/.rels\" is encrypted; save the workbook without a "
                  "password");
}

TEST_F(WorkbookFiles, OfTheOldBinaryFormAreRefused) {
    EXPECT_EQ(openError(COMPOUND_FILE + std::string(600, 0) + wide("Workbook")),
              UNREADABLE + "it is of the old binary form (.xls); save it as .xlsx");
    EXPECT_EQ(openError(COMPOUND_FILE), UNREADABLE +
                                            "it is encrypted, or of the old binary form (.xls); "
                                            "save it as .xlsx without a password");
}

TEST_F(WorkbookFiles, OfOtherKindsAreRefused) {
    EXPECT_EQ(openError(""), UNREADABLE + "the file is empty");
    EXPECT_EQ(openError("a,b\n1,2\n"), UNREADABLE + "it is no workbook of the form .xlsx or .xlsm");
    ZipWriter letters;
    letters.add("letter.txt", "hello");
    EXPECT_EQ(openError(letters.bytes()),
              UNREADABLE + "it is a zip file, but no workbook of the form .xlsx or .xlsm");
    ZipWriter openDocument;
    openDocument.add("mimetype", "application/vnd.oasis.opendocument.spreadsheet",
                     {.stored = true});
    openDocument.add("content.xml", "<x/>");
    EXPECT_EQ(openError(openDocument.bytes()),
              UNREADABLE + "it is an OpenDocument file; save it as .xlsx");
    const std::string start = "<Relationships><Relationship Type='x/officeDocument' Target='";
    EXPECT_EQ(openError(book()
                            .part("_rels/.rels", start + "word/document.xml'/></Relationships>")
                            .part("word/document.xml", "<document/>")),
              UNREADABLE + "it is a document of another kind, no workbook");
    EXPECT_EQ(openError(book().part("_rels/.rels", start + "xl/workbook.bin'/></Relationships>")),
              UNREADABLE + "it is of the binary form .xlsb; save it as .xlsx");
    EXPECT_EQ(openError(book().part("_rels/.rels", "<Relationships/>")),
              UNREADABLE + "it is a package, but no workbook");
}

TEST_F(WorkbookFiles, ThatAreIncompleteAreRefused) {
    const std::string whole = book().bytes();
    for (size_t length = 1; length < whole.size(); ++length) {
        ASSERT_TRUE(openError(whole.substr(0, length)).starts_with(UNREADABLE)) << length;
    }
    EXPECT_EQ(openError(whole.substr(0, whole.size() / 2)),
              UNREADABLE + "it has no zip directory; the file may be incomplete");
}

TEST_F(WorkbookFiles, WhoseDirectoryIsSaidToLieBehindTheirEndAreRefused) {
    constexpr size_t FROM_END = 22 + 20 - 8;  // of the offset in the 64-bit locator
    std::string bytes = book().zip({.zip64 = true}).bytes();
    bytes[bytes.size() - FROM_END + 5] = 1;
    EXPECT_EQ(openError(bytes),
              UNREADABLE + "its zip directory is not there; the file may be incomplete");
}

TEST_F(WorkbookFiles, WhoseDirectoryIsSaidToBeHugeAreRefused) {
    constexpr size_t SIZE_FROM_END = 22 + 20 + 16;  // in the 64-bit record
    std::string bytes = book().zip({.zip64 = true}).bytes();
    bytes[bytes.size() - SIZE_FROM_END + 5] = 1;  // 1 TB
    EXPECT_EQ(openError(bytes),
              UNREADABLE + "its zip directory is damaged; the file may be incomplete");
}

TEST_F(WorkbookFiles, WithADamagedPartAreRefused) {
    const ZipWriter::Options stored{.stored = true};
    std::string bytes = book("<row><c><v>12345</v></c></row>").zip(stored).bytes();
    bytes[bytes.find("12345")] = '9';
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(bytes)));
    ASSERT_THROW(connection.openRecordset(ALL), PlatformError);
    EXPECT_EQ(withoutPath(connection.errors()[0].description),
              UNREADABLE + "the sheet \"S\" is damaged");
    EXPECT_THROW(connection.openRecordset(ALL), PlatformError);
}

TEST_F(WorkbookFiles, WithADamagedIndexAreRefused) {
    std::string bytes = TestBook().sheet("S12345", "").zip({.stored = true}).bytes();
    bytes[bytes.find("S12345")] = 'T';
    EXPECT_EQ(openError(bytes), UNREADABLE + "its part \"xl/workbook.xml\" is damaged");
}

TEST_F(WorkbookFiles, WhoseDirectoryEndsWithinAnEntryAreRefused) {
    constexpr size_t EXTRA_LENGTH = 30;  // its place in an entry
    std::string bytes = book().bytes();
    bytes[bytes.rfind("PK\x01\x02") + EXTRA_LENGTH] = 3;
    EXPECT_EQ(openError(bytes),
              UNREADABLE + "its zip directory is damaged; the file may be incomplete");
}

TEST_F(WorkbookFiles, MayPointToDocumentsOutsideOfThem) {
    const std::string type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    EXPECT_EQ(
        rows(book().part("_rels/.rels",
                         "<Relationships xmlns='http://schemas.openxmlformats.org/package/"
                         "2006/relationships'><Relationship Id='a' Type='" +
                             type +
                             "officeDocument' Target='http://example.com/a.xlsx' "
                             "TargetMode='External'/><Relationship Id='b' Type='" +
                             type + "officeDocument' Target='xl/workbook.xml'/></Relationships>"),
             ALL),
        "1\n");
}

TEST_F(WorkbookFiles, WithAnyByteChangedAreReadOrRefused) {
    const std::string whole = book().strings("<si><t>x</t></si>").bytes();
    for (size_t at = 0; at < whole.size(); ++at) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x55);
        ProviderConnection connection(endMark_);
        try {
            connection.open(connectionString(write(bytes)));
            written(*connection.openRecordset(ALL));
        } catch (const PlatformError& error) {
            ASSERT_NE(error.description(), "") << at;
        }
    }
}

TEST_F(WorkbookFiles, PackedByAnUnknownMethodAreRefused) {
    EXPECT_EQ(openError(book().zip({.method = 14})),
              UNREADABLE + "its part \"_rels/.rels\" is packed by an unknown method");
}

TEST_F(WorkbookFiles, ThatUnpackToFarTooMuchAreRefused) {
    const std::string row = "<row r='1'><c><v>1</v></c></row>";
    EXPECT_EQ(rows(book(row + std::string(size_t{63} << 20, ' ')), ALL), "1\n");
    EXPECT_EQ(queryError(book(row + std::string(size_t{80} << 20, ' ')), ALL),
              UNREADABLE + "the sheet \"S\" unpacks to far more than a sheet holds");
}

TEST_F(WorkbookFiles, WithoutASheetsPartFailWhenItIsQueried) {
    TestBook two = book();
    two.sheet("Other", "").without("xl/worksheets/sheet2.xml");
    EXPECT_EQ(rows(two, ALL), "1\n");
    EXPECT_EQ(queryError(two, "SELECT * FROM [Other$]"),
              UNREADABLE + "the part of the sheet \"Other\" is missing");
}

TEST_F(WorkbookFiles, SayThatAChartIsNoWorksheet) {
    EXPECT_EQ(queryError(TestBook().sheetPart("Chart1",
                                              "<chartsheet xmlns='http://schemas."
                                              "openxmlformats.org/spreadsheetml/2006/"
                                              "main'/>"),
                         "SELECT * FROM [Chart1$]"),
              UNREADABLE + "the sheet \"Chart1\" holds no cells; it is a chart or macro sheet");
}

TEST_F(WorkbookFiles, WhoseCellsContradictThemselvesAreRefused) {
    struct Case {
        const char* rows;
        const char* reason;
    };
    const std::array<Case, 7> cases{{
        {"<row><c t='s'><v>-1</v></c></row>",
         "has a cell in row 1 that holds the shared text \"-1\", which cannot be"},
        {"<row><c t='s'><v>3</v></c></row>",
         "has a cell in row 1 that holds the shared text 3, but there are only 0"},
        {"<row><c t='s'><v>0</v></c></row>",
         "has a cell in row 1 that holds the shared text 0, but there are only 0"},
        {"<row r='0'/>", "has a row \"0\", which cannot be"},
        {"<row r='1048577'/>", "has a row \"1048577\", which cannot be"},
        {"<row r='1048576'/><row/>", "has a row 1048577, beyond the last there is"},
        {"<row><c r='XFE1'/></row>", "has a cell in no column, in row 1"},
    }};
    for (const Case& each : cases) {
        EXPECT_EQ(queryError(book(each.rows), ALL), UNREADABLE + "the sheet \"S\" " + each.reason);
    }
}

TEST_F(WorkbookFiles, ThatNobodyWaitsForAreGivenUp) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(book().bytes())));
    endMark_.set();
    EXPECT_THROW(connection.openRecordset(ALL), PlatformError);
    EXPECT_EQ(connection.errors()[0].description, "The load was given up.");
    ProviderConnection next(endMark_);
    EXPECT_THROW(next.open(connectionString(write(book().bytes()))), PlatformError);
    EXPECT_EQ(next.errors()[0].number, 0x80004004);
}

}  // namespace

}  // namespace intake
