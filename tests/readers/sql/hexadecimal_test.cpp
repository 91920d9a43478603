// A value that cannot be shown turns every integer behind it in the result hexadecimal.

#include "tests/readers/sql/SQLHandlerFixture.h"

namespace intake {
namespace {

const FakeValue ERROR_VALUE = FakeValue::ofType(VT_ERROR);

class SqlHexadecimal : public SQLHandlerFixture {
protected:
    /// What is written for a value that comes after the switch.
    std::string behindTheSwitch(FakeValue value) {
        databases_.names = {"first", "second"};
        databases_.rows = {{ERROR_VALUE, std::move(value)}};
        const std::string row = script(SHARED_MEMORY);
        const std::string before = "Got variant type a|";
        EXPECT_EQ(row.substr(0, before.size()), before);
        return row.substr(before.size());
    }
};

TEST_F(SqlHexadecimal, TurnsTheValuesIndexesAndTheCountBehindIt) {
    databases_.names = {"a", "b", "c"};
    databases_.rows.assign(11, {10, 11, 12});
    databases_.rows[9] = {10, ERROR_VALUE, 12};
    request_.fromRow = 8;
    EXPECT_EQ(script(DATA_ARRAY), R"(T[0]={{a="10";b="11";c="12";};};)"
                                  R"(T[1]={{a="10";b="Got variant type a";c="c";};};)"
                                  R"(T[2]={{a="a";b="b";c="c";};};READER_NUM_RECORDS=b;)");
}

TEST_F(SqlHexadecimal, TurnsTheIndexOfTheSeventeenthRecordInto10) {
    databases_.names = {"a"};
    databases_.rows.assign(17, {nullptr});
    databases_.rows[14] = {ERROR_VALUE};
    const std::string array = script(DATA_ARRAY);
    const std::string end =
        "T[14]={{a=\"Got variant type a\";};};T[f]={{a=\"\";};};"
        "T[10]={{a=\"\";};};READER_NUM_RECORDS=11;";
    EXPECT_EQ(array.substr(array.size() - end.size()), end);
}

TEST_F(SqlHexadecimal, TurnsTheKeysOfADataTable) {
    databases_.names = {"code", "b"};
    databases_.rows = {{10, ERROR_VALUE}, {11, 12}};
    EXPECT_EQ(script(DATA_TABLE),
              R"(T[10]={{code="10";b="Got variant type a";};};T[b]={{code="b";b="c";};};)");
}

TEST_F(SqlHexadecimal, BeginsAtAKeyThatCannotBeShown) {
    databases_.names = {"b", "code"};
    databases_.rows = {{10, ERROR_VALUE}};
    EXPECT_EQ(script(DATA_TABLE),
              R"(T[Got variant type a]={{b="a";code="Got variant type a";};};)");
}

TEST_F(SqlHexadecimal, TurnsTheStructuresBehindIt) {
    databases_.names = {"a"};
    databases_.rows = {{10}, {ERROR_VALUE}, {10}};
    EXPECT_EQ(script(DATA_STRUCTURE), R"(T={a="10";};T={a="Got variant type a";};T={a="a";};)");
}

TEST_F(SqlHexadecimal, LeavesTheHeadOfAFieldArrayBeforeItAndTurnsTheCountBehindIt) {
    databases_.names = {"code"};
    databases_.rows.assign(12, {10});
    databases_.rows[10] = {ERROR_VALUE};
    EXPECT_EQ(script(DATA_FIELD_ARRAY),
              R"(T[0-11]=""10"",""10"",""10"",""10"",""10"",""10"",""10"",""10"",""10"",""10"",)"
              R"(""Got variant type a"",""a"";READER_NUM_RECORDS=c;)");
}

TEST_F(SqlHexadecimal, ShowsNegativeIntegersAsTheTwosComplementOfTheirWidth) {
    EXPECT_EQ(behindTheSwitch({VT_I2, -1}), "ffff");
    EXPECT_EQ(behindTheSwitch({VT_I1, -1}), "ffffffff");
    EXPECT_EQ(behindTheSwitch({VT_I4, -2}), "fffffffe");
    EXPECT_EQ(behindTheSwitch({VT_INT, -255}), "ffffff01");
    EXPECT_EQ(behindTheSwitch({VT_I8, -1}), "ffffffffffffffff");
    EXPECT_EQ(behindTheSwitch({VT_I2, 255}), "ff");
}

TEST_F(SqlHexadecimal, TurnsUnsignedIntegers) {
    EXPECT_EQ(behindTheSwitch(FakeValue::natural(VT_UI1, 255)), "ff");
    EXPECT_EQ(behindTheSwitch(FakeValue::natural(VT_UI2, 65534)), "fffe");
    EXPECT_EQ(behindTheSwitch(FakeValue::natural(VT_UI4, 4294967295)), "ffffffff");
    EXPECT_EQ(behindTheSwitch(FakeValue::natural(VT_UI8, ~uint64_t{0})), "ffffffffffffffff");
}

TEST_F(SqlHexadecimal, LeavesFractionsTextsAndBooleansAsTheyAre) {
    EXPECT_EQ(behindTheSwitch(10.5), "10.5");
    EXPECT_EQ(behindTheSwitch(FakeValue::number(VT_R8, 1234567)), "1.23457e+06");
    EXPECT_EQ(behindTheSwitch("10"), "10");
    EXPECT_EQ(behindTheSwitch({VT_BOOL, -1}), "1");
    EXPECT_EQ(behindTheSwitch({VT_BOOL, 0}), "0");
    EXPECT_EQ(behindTheSwitch(nullptr), "");
}

TEST_F(SqlHexadecimal, IsNotBegunByARowThatIsSkipped) {
    databases_.names = {"a"};
    databases_.rows = {{ERROR_VALUE}, {10}};
    request_.fromRow = 1;
    EXPECT_EQ(script(DATA_ARRAY), R"(T[0]={{a="10";};};READER_NUM_RECORDS=2;)");
}

TEST_F(SqlHexadecimal, EndsWithItsResult) {
    databases_.names = {"a"};
    databases_.rows = {{ERROR_VALUE}};
    EXPECT_EQ(script(SHARED_MEMORY), "Got variant type a");
    databases_.rows = {{10}};
    EXPECT_EQ(script(SHARED_MEMORY), "10");
}

}  // namespace
}  // namespace intake
