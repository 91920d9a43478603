// Which rows are written, and what the count says.

#include "tests/readers/sql/SQLHandlerFixture.h"

#include <limits>

#include "readers/sql/SqlRecords.h"

namespace intake {
namespace {

/// Four rows of one field.
class SqlRows : public SQLHandlerFixture {
protected:
    SqlRows() {
        databases_.names = {"code"};
        databases_.rows = {{"a"}, {"b"}, {"c"}, {"d"}};
    }

    std::string rows(TargetMode mode, int32_t fromRow, int32_t numRows) {
        request_.fromRow = fromRow;
        request_.numRows = numRows;
        return script(mode);
    }
};

TEST_F(SqlRows, AreTheOnesOfTheRange) {
    EXPECT_EQ(rows(DATA_TABLE, 1, 2), R"(T[b]={{code="b";};};T[c]={{code="c";};};)");
    EXPECT_EQ(rows(DATA_STRUCTURE, 3, 2), R"(T={code="d";};)");
    EXPECT_EQ(rows(SHARED_MEMORY, 2, 2), "c/d");
}

TEST_F(SqlRows, AreNumberedFromTheFirstWrittenOneAndCountedFromTheFirstOfAll) {
    EXPECT_EQ(rows(DATA_ARRAY, 1, 2),
              R"(T[0]={{code="b";};};T[1]={{code="c";};};READER_NUM_RECORDS=3;)");
    EXPECT_EQ(rows(DATA_FIELD_ARRAY, 1, 2), R"(T[0-1]=""b"",""c"";READER_NUM_RECORDS=3;)");
}

TEST_F(SqlRows, OfAHundredFromTheFifthOnTenAreWrittenAndFifteenCounted) {
    databases_.rows.assign(100, {1});
    EXPECT_EQ(rows(DATA_FIELD_ARRAY, 5, 10),
              R"(T[0-9]=""1"",""1"",""1"",""1"",""1"",""1"",""1"",""1"",""1"",""1"";)"
              "READER_NUM_RECORDS=15;");
}

TEST_F(SqlRows, BeyondTheLastAreNoneButAllAreCounted) {
    EXPECT_EQ(rows(DATA_TABLE, 4, 1), "");
    EXPECT_EQ(rows(DATA_ARRAY, 4, 1), "READER_NUM_RECORDS=4;");
    EXPECT_EQ(rows(DATA_ARRAY, 100, 1), "READER_NUM_RECORDS=4;");
    EXPECT_EQ(rows(DATA_FIELD_ARRAY, 100, 1), "T[0--1]=;READER_NUM_RECORDS=4;");
    EXPECT_EQ(rows(SHARED_MEMORY, 100, 1), "");
}

TEST_F(SqlRows, FromANegativeRowAreThoseOfTheRangeThatExist) {
    EXPECT_EQ(rows(DATA_ARRAY, -1, 3),
              R"(T[0]={{code="a";};};T[1]={{code="b";};};READER_NUM_RECORDS=2;)");
    EXPECT_EQ(rows(DATA_ARRAY, -3, 3), "READER_NUM_RECORDS=0;");
    EXPECT_EQ(rows(DATA_ARRAY, std::numeric_limits<int32_t>::min(), 1), "READER_NUM_RECORDS=0;");
}

TEST_F(SqlRows, OfANegativeNumberAreNone) {
    EXPECT_EQ(rows(DATA_ARRAY, 0, -1), "READER_NUM_RECORDS=0;");
    EXPECT_EQ(rows(DATA_ARRAY, 3, -2), "READER_NUM_RECORDS=1;");
    EXPECT_EQ(rows(DATA_FIELD_ARRAY, 0, -1), "T[0--1]=;READER_NUM_RECORDS=0;");
}

TEST_F(SqlRows, OfTheLargestNumberAreAll) {
    const int32_t most = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(rows(SHARED_MEMORY, 1, most), "b/c/d");
    EXPECT_EQ(rows(DATA_ARRAY, most, most), "READER_NUM_RECORDS=4;");
}

TEST_F(SqlRows, OfARangeFarBeyondTheLastTakeLittleMoreMemoryThanTheirScript) {
    databases_.rows.assign(40'000, FakeRow{{VT_BSTR, std::string(50, 'x')}});
    request_.numRows = 1'000'000;
    const std::string all = scriptAlone(DATA_ARRAY);
    EXPECT_GT(all.size(), 2U << 20U);
    EXPECT_LT(script_.capacity(), 20 * all.size());
}

TEST_F(SqlRows, CutOffBeforeTheEndLeaveARowsDelimiterInSharedMemory) {
    EXPECT_EQ(rows(SHARED_MEMORY, 0, 2), "a/b/");
    EXPECT_EQ(rows(SHARED_MEMORY, 1, 2), "b/c/");
    EXPECT_EQ(rows(SHARED_MEMORY, 0, 4), "a/b/c/d");
}

TEST_F(SqlRows, OfLongNamesOrTextsAreRefusedBeforeTheyTakeAllMemory) {
    const auto errorOfRows = [this](TargetMode mode) {
        request_.targetMode = mode;
        const auto recordset = databases_.createConnection(endMark_)->openRecordset(request_.query);
        std::string script, error;
        SqlRecords records(*recordset, request_, logger_, script, error,
                           RowsLimit("SQL: The rows", 1));
        return records.write() ? "written" : error;
    };
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        databases_.rows.assign(9, FakeRow{{VT_BSTR, std::string(100'000, 'x')}});
        EXPECT_EQ(errorOfRows(mode),
                  mode == DATA_TABLE ? "SQL: The rows become larger than 1 MB" : "written");
        databases_.rows.assign(11, FakeRow{{VT_BSTR, std::string(100'000, 'x')}});
        EXPECT_EQ(errorOfRows(mode), "SQL: The rows become larger than 1 MB") << mode;
    }
    databases_.names = {std::string(100'000, 'n')};
    databases_.rows.assign(11, {1});
    EXPECT_EQ(errorOfRows(DATA_ARRAY), "SQL: The rows become larger than 1 MB");
}

TEST_F(SqlRows, OfFarTooManyLongFieldsAreRefusedWithinTheFirst) {
    databases_.names.assign(2000, "n");
    request_.targetMode = DATA_ARRAY;
    databases_.rows = {FakeRow(2000, FakeValue(VT_BSTR, std::string(100'000, 'x')))};
    const auto recordset = databases_.createConnection(endMark_)->openRecordset(request_.query);
    std::string script, error;
    SqlRecords records(*recordset, request_, logger_, script, error, RowsLimit("SQL: The rows", 1));
    EXPECT_FALSE(records.write());
    EXPECT_LT(script.size(), 1'200'000U);
}

}  // namespace
}  // namespace intake
