// Which of the selected nodes are delivered, and under which numbers.

#include <gtest/gtest.h>

#include <limits>

#include "platform/Platform.h"
#include "readers/xml/XmlRecords.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/readers/xml/read.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr auto LETTERS = "<a><b>x</b><b>y</b><b>z</b></a>";
constexpr int32_t LARGEST = std::numeric_limits<int32_t>::max();
constexpr int32_t SMALLEST = std::numeric_limits<int32_t>::min();

std::string rows(TargetMode mode, int32_t fromRow, int32_t numRows) {
    return fileScript(
        LETTERS,
        {.xpath = "/a/b", .mode = mode, .key = ".", .fromRow = fromRow, .numRows = numRows});
}

std::string fieldArray(int32_t fromRow, int32_t numRows) {
    return rows(DATA_FIELD_ARRAY, fromRow, numRows);
}

TEST(XmlRows, StartAtFromRowAndAreAsManyAsAskedFor) {
    EXPECT_EQ(fieldArray(0, 2), R"(T[0-1]=""x"",""y""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(1, 1), R"(T[0-0]=""y""; READER_NUM_RECORDS=1;)");
    EXPECT_EQ(fieldArray(0, 3), R"(T[0-2]=""x"",""y"",""z""; READER_NUM_RECORDS=3;)");
}

TEST(XmlRows, AreCutToTheEndOfTheNodeListWhenNumRowsIsLargerThanWhatIsLeft) {
    EXPECT_EQ(fieldArray(1, 3), R"(T[0-1]=""y"",""z""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(2, LARGEST), R"(T[0-0]=""z""; READER_NUM_RECORDS=1;)");
}

/// The name is for the parser, which begins anew behind rows that were written already.
TEST(XmlRows, AreThoseOfTheWholeDocumentWhereItCannotBeReadRowByRow) {
    const std::string source = "<a><b>x</b><b>y</b><\xC3\xB6/></a>";
    EXPECT_EQ(fileScript(source, {.xpath = "/a/b", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-1]=""x"",""y""; READER_NUM_RECORDS=2;)");
}

TEST(XmlRows, AreNoneAndNoErrorWhenFromRowEqualsTheNumberOfNodesOrIsLarger) {
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        EXPECT_EQ(rows(mode, 3, 5), "");
        EXPECT_EQ(rows(mode, 4, 5), "");
        EXPECT_EQ(rows(mode, LARGEST, LARGEST), "");
    }
}

TEST(XmlRows, OfADataArrayBeginAtZeroAndAreCountedWithoutThoseSkipped) {
    EXPECT_EQ(rows(DATA_ARRAY, 1, 5),
              R"(T[0]={{#text="y";};};T[1]={{#text="z";};};READER_NUM_RECORDS=2;)");
}

TEST(XmlRows, OfTheOtherModesAreTheSame) {
    EXPECT_EQ(rows(DATA_TABLE, 1, 1), R"(T[y]={{#text="y";};};)");
    EXPECT_EQ(rows(DATA_STRUCTURE, 1, 1), R"(T={#text="y";};)");
    EXPECT_EQ(rows(SHARED_MEMORY, 1, 1), "y");
    EXPECT_EQ(rows(SHARED_MEMORY, 1, 9), "y|z");
}

TEST(XmlRows, AreNoneWhenNoneAreAskedForAndTheCountSaysSo) {
    EXPECT_EQ(fieldArray(0, 0), "T[0--1]=; READER_NUM_RECORDS=0;");
    EXPECT_EQ(fieldArray(2, 0), "T[0--1]=; READER_NUM_RECORDS=0;");
    EXPECT_EQ(rows(DATA_ARRAY, 1, 0), "READER_NUM_RECORDS=0;");
    EXPECT_EQ(rows(DATA_TABLE, 1, 0), "");
    EXPECT_EQ(rows(DATA_STRUCTURE, 1, 0), "");
    EXPECT_EQ(rows(SHARED_MEMORY, 1, 0), "");
}

TEST(XmlRows, AreNoneForANegativeNumberThatTheCountShows) {
    EXPECT_EQ(fieldArray(0, -1), "T[0--2]=; READER_NUM_RECORDS=-1;");
    EXPECT_EQ(rows(DATA_ARRAY, 2, -5), "READER_NUM_RECORDS=-5;");
    EXPECT_EQ(rows(SHARED_MEMORY, 0, SMALLEST), "");
}

TEST(XmlRows, StartAtTheFirstForANegativeFromRowThatTheCountIncludes) {
    EXPECT_EQ(fieldArray(-1, 2), R"(T[0-1]=""x""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(-1, LARGEST), R"(T[0-3]=""x"",""y"",""z""; READER_NUM_RECORDS=4;)");
    EXPECT_EQ(rows(DATA_ARRAY, -2, 3), R"(T[0]={{#text="x";};};READER_NUM_RECORDS=3;)");
    EXPECT_EQ(rows(SHARED_MEMORY, -1, 3), "x|y");
}

TEST(XmlRows, BeforeTheFirstAreNone) {
    EXPECT_EQ(rows(DATA_ARRAY, -5, 2), "READER_NUM_RECORDS=2;");
    EXPECT_EQ(rows(SHARED_MEMORY, SMALLEST, LARGEST), "");
}

/// The error of loading a file when rows may become 1 MB; empty when there is none.
std::string errorOfRows(const std::string& source, const RequestRecord& request) {
    const AsWorker worker;
    const TempDirectory directory;
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(-1);
    const EndMark endMark;
    const auto document =
        systemPlatform().xml.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark);
    std::string script;
    XmlRecords records(*document, request, logger, script, RowsLimit("XML: The rows", 1));
    records.takeWhileLoading();
    try {
        EXPECT_TRUE(document->loadFile(directory.write("source.xml", source)));
        if (!document->rowsFound()) {
            document->selectNodes(request.xpath);
        }
        records.write();
        return "";
    } catch (const RowsTooLarge& error) {
        return error.what();
    }
}

RequestRecord requestOfRows(const std::string& xpath, TargetMode mode, const std::string& key) {
    RequestRecord request;
    request.xpath = xpath;
    request.targetMode = mode;
    request.key = key;
    request.numRows = 1000;
    return request;
}

TEST(XmlRows, ThatHoldEachOtherAreRefusedBeforeTheyTakeAllMemory) {
    std::string text(10'000, 'x');
    for (int depth = 0; depth < 200; ++depth) {
        text = "<a>" + text + "</a>";
    }
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        for (const char* const path : {"//a", "//a[true()]"}) {  // while loading, and selected
            EXPECT_EQ(errorOfRows(text, requestOfRows(path, mode, ".")),
                      "XML: The rows become larger than 1 MB")
                << path << ", mode " << mode;
            EXPECT_EQ(errorOfRows(text, requestOfRows("/a", mode, ".")), "");
        }
    }
}

TEST(XmlRows, WithTheSameLongKeyAreRefusedBeforeTheyTakeAllMemory) {
    std::string text = "<r n='" + std::string(100'000, 'n') + "'>";
    for (int row = 0; row < 20; ++row) {
        text += "<a/>";
    }
    EXPECT_EQ(errorOfRows(text + "</r>", requestOfRows("/r/a", DATA_TABLE, "../@n")),
              "XML: The rows become larger than 1 MB");
}

}  // namespace
}  // namespace intake
