#include "workbench/cli/written_records.h"

#include <gtest/gtest.h>

#include "host/lumo.h"
#include "workbench/cli/UsageError.h"
#include "workbench/lumo/Host.h"

using workbench::requireCountable;
using workbench::writtenRecords;

namespace {

enum Mode { TABLE, ARRAY, STRUCTURE, FIELD_ARRAY, SHARED_MEMORY };
enum Query { SQL = 1, JSON = 3 };

struct WrittenRecords : testing::Test {
    WrittenRecords() {
        evRegisterParameterInt("queryMode", "", JSON, 0, 4);
        evRegisterParameterInt("mode", "", TABLE, 0, 4);
        evRegisterParameterString("varsPrefix", "", "P_", 80, 80, 0);
        evRegisterParameterString("delimiter", "", "|", 80, 80, 0);
        evRegisterParameterString("rowsDelimiter", "", "\n", 80, 80, 0);
        evRegisterParameterString("xpath", "", "rows", 80, 80, 0);
        evRegisterParameterString("key", "", "", 80, 80, 0);
    }

    std::size_t count(Mode mode, const std::string& written, Query query = JSON) {
        lumo::Record record(host.parameters);
        record.setInteger(1, query);
        record.setInteger(2, mode);
        return writtenRecords(written, host.parameters, record);
    }

    workbench::WrittenRecords read(Mode mode, const std::string& written, const char* key = "") {
        lumo::Record record(host.parameters);
        record.setInteger(1, JSON);
        record.setInteger(2, mode);
        record.setText(7, key);
        return {written, host.parameters, record};
    }

    // Of JSON that is loaded without a path.
    std::size_t countWhole(Mode mode, const std::string& written) {
        lumo::Record record(host.parameters);
        record.setInteger(2, mode);
        record.setText(6, "");
        return writtenRecords(written, host.parameters, record);
    }

    lumo::Host host;
};

}  // namespace

TEST_F(WrittenRecords, ARecordThatAnotherReplacesDoesNotCount) {
    EXPECT_EQ(count(TABLE, "T[a]={{x=1;},};T[b]={{x=2;},};T[a]={{x=3;},};"), 2U);
}

TEST_F(WrittenRecords, AnEmptyKeyIsAKey) {
    EXPECT_EQ(count(TABLE, "T[]={{x=1;},};"), 1U);
}

TEST_F(WrittenRecords, AKeyThatReadsAsARangeSetsItsFirstElement) {
    EXPECT_EQ(count(TABLE, "T[1-2]={{x=1;},};T[1]={{x=2;},};T[4-9]={{x=1;},};"), 2U);
}

TEST_F(WrittenRecords, FieldsThatPagesCountInHaveNoPrefix) {
    EXPECT_EQ(count(STRUCTURE, "a={x=1;};b={x=1;};READER_NUM_RECORDS=2;"), 2U);
    EXPECT_EQ(count(STRUCTURE, "a={x=1;};P_READER_NUM_RECORDS=2;"), 1U);
}

TEST_F(WrittenRecords, ARangeWithoutElementsHasNone) {
    EXPECT_EQ(count(FIELD_ARRAY, "T[0--1]=; P_READER_NUM_RECORDS=0;"), 0U);
    EXPECT_EQ(count(FIELD_ARRAY, "T[0-0]=\"\"\"\"; P_READER_NUM_RECORDS=1;"), 1U);
}

TEST_F(WrittenRecords, NoScriptHasNone) {
    for (const Mode mode : {TABLE, ARRAY, STRUCTURE, FIELD_ARRAY, SHARED_MEMORY})
        EXPECT_EQ(count(mode, ""), 0U);
}

TEST_F(WrittenRecords, RowsOfAQueryInSharedMemoryAreDividedByTheRowsDelimiter) {
    EXPECT_EQ(count(SHARED_MEMORY, "a|1\nb|2", SQL), 2U);
    EXPECT_EQ(count(SHARED_MEMORY, "a|1\nb|2\n", SQL), 2U);
    EXPECT_EQ(count(SHARED_MEMORY, "a|1\nb|2\n", JSON), 3U);
}

TEST_F(WrittenRecords, RowsAreNotCountedWhereFieldsAreDividedAlike) {
    lumo::Record record(host.parameters);
    record.setInteger(1, SQL);
    record.setText(5, "|");
    EXPECT_NO_THROW(requireCountable(host.parameters, record));
    record.setInteger(2, SHARED_MEMORY);
    EXPECT_THROW(requireCountable(host.parameters, record), workbench::UsageError);
    record.setText(5, "\n");
    EXPECT_NO_THROW(requireCountable(host.parameters, record));
}

TEST_F(WrittenRecords, AWholeDocumentIsOneRecordOrAnArrayOfThem) {
    for (const Mode mode : {TABLE, ARRAY, STRUCTURE, FIELD_ARRAY}) {
        EXPECT_EQ(countWhole(mode, "T={a=1;b[0-1]={{c=1;},{c=2;},};};"), 1U);
        EXPECT_EQ(countWhole(mode, "T={};"), 1U);
        EXPECT_EQ(countWhole(mode, "T=5;"), 1U);
        EXPECT_EQ(countWhole(mode, "T[0-1]={{a=1;},{a=2;},};"), 2U);
        EXPECT_EQ(countWhole(mode, "T[0-2]=1,2,3,;"), 3U);
        EXPECT_EQ(countWhole(mode, "T[0--1]=;"), 0U);
        EXPECT_EQ(countWhole(mode, ""), 0U);
    }
}

TEST_F(WrittenRecords, ARecordWithoutAKeyIsTheSameAtAnotherPlace) {
    const std::string one = "T[0]={{x=1;},};T[1]={{x=2;},};";
    EXPECT_EQ(read(TABLE, one).marks(), read(TABLE, "T[0]={{x=2;},};T[1]={{x=1;},};").marks());
    EXPECT_NE(read(TABLE, one).marks(), read(TABLE, "T[0]={{x=2;},};T[1]={{x=3;},};").marks());
}

TEST_F(WrittenRecords, ARecordOfAnotherKeyIsAnotherOne) {
    const std::string one = "T[a]={{x=1;},};";
    EXPECT_EQ(read(TABLE, one, "id").marks(), read(TABLE, one, "id").marks());
    EXPECT_NE(read(TABLE, one, "id").marks(), read(TABLE, "T[b]={{x=1;},};", "id").marks());
}

TEST_F(WrittenRecords, EveryModeHasAsManyMarksAsRecords) {
    for (const auto& [mode, written] :
         std::vector<std::pair<Mode, std::string>>{{TABLE, "T[a]={{x=1;},};T[b]={{x=1;},};"},
                                                   {STRUCTURE, "a=1;b=2;READER_NUM_RECORDS=2;"},
                                                   {FIELD_ARRAY, "F[0-1]=1,1,;"},
                                                   {SHARED_MEMORY, "a|a"}}) {
        const auto marks = read(mode, written).marks();
        ASSERT_TRUE(marks) << written;
        EXPECT_EQ(marks->size(), 2U) << written;
    }
}

TEST_F(WrittenRecords, TooMuchIsNotLookedThrough) {
    EXPECT_FALSE(read(TABLE, "T[a]=\"" + std::string(300'000, 'x') + "\";").marks());
}

TEST_F(WrittenRecords, NumbersOfPlainFieldsAndMembersAreTold) {
    std::string told;
    for (const auto& number :
         read(STRUCTURE, "a=1.50;b=\"7\";c=\"x\";s={home=2;at={of=3;};};l={1,2,};T[k]=5;")
             .numbers())
        told += number.name + "=" + std::to_string(number.value) + (number.isText ? " text;" : ";");
    EXPECT_EQ(told, "a=1.500000;b=7.000000 text;s.home=2.000000;s.at.of=3.000000;");
}
