// How each variant type is written.

#include "tests/readers/sql/SQLHandlerFixture.h"

#include <limits>

namespace intake {
namespace {

class SqlValues : public SQLHandlerFixture {
protected:
    /// What is written for one value.
    std::string written(FakeValue value) {
        databases_.names = {"v"};
        databases_.rows = {{std::move(value)}};
        return script(SHARED_MEMORY);
    }
};

TEST_F(SqlValues, OfNothingAreEmpty) {
    EXPECT_EQ(written(nullptr), "");
    EXPECT_EQ(written(FakeValue::ofType(VT_EMPTY)), "");
}

TEST_F(SqlValues, ThatAreNullStandAsEmptyTextsInEveryMode) {
    databases_.names = {"code", "points"};
    databases_.rows = {{"HOL", nullptr}, {nullptr, 1}};
    EXPECT_EQ(script(DATA_ARRAY),
              R"(T[0]={{code="HOL";points="";};};T[1]={{code="";points="1";};};)"
              "READER_NUM_RECORDS=2;");
    EXPECT_EQ(script(DATA_FIELD_ARRAY), R"(T[0-1]=""HOL"","""";READER_NUM_RECORDS=2;)");
    EXPECT_EQ(script(DATA_TABLE),
              R"(T[HOL]={{code="HOL";points="";};};T[]={{code="";points="1";};};)");
    EXPECT_EQ(script(SHARED_MEMORY), "HOL|/|1");
}

TEST_F(SqlValues, OfSignedTypesAreDecimal) {
    EXPECT_EQ(written({VT_I2, -32768}), "-32768");
    EXPECT_EQ(written({VT_I1, -128}), "-128");
    EXPECT_EQ(written({VT_I4, std::numeric_limits<int32_t>::min()}), "-2147483648");
    EXPECT_EQ(written({VT_INT, std::numeric_limits<int32_t>::max()}), "2147483647");
    EXPECT_EQ(written({VT_I8, std::numeric_limits<int64_t>::min()}), "-9223372036854775808");
    EXPECT_EQ(written({VT_I8, std::numeric_limits<int64_t>::max()}), "9223372036854775807");
}

TEST_F(SqlValues, OfUnsignedTypesAreDecimal) {
    EXPECT_EQ(written(FakeValue::natural(VT_UI1, 255)), "255");
    EXPECT_EQ(written(FakeValue::natural(VT_UI2, 65535)), "65535");
    EXPECT_EQ(written(FakeValue::natural(VT_UI4, 4294967295)), "4294967295");
    EXPECT_EQ(written(FakeValue::natural(VT_UINT, 4294967295)), "4294967295");
    EXPECT_EQ(written(FakeValue::natural(VT_UI8, std::numeric_limits<uint64_t>::max())),
              "18446744073709551615");
}

TEST_F(SqlValues, WithAFractionHaveSixSignificantDigits) {
    for (const VariantType type : {VT_R4, VT_R8, VT_DECIMAL}) {
        EXPECT_EQ(written(FakeValue::number(type, 7.50)), "7.5");
        EXPECT_EQ(written(FakeValue::number(type, 1234567)), "1.23457e+06");
        EXPECT_EQ(written(FakeValue::number(type, -0.00001234567)), "-1.23457e-05");
        EXPECT_EQ(written(FakeValue::number(type, 100000)), "100000");
    }
}

TEST_F(SqlValues, WithAFractionMayComeAsDecimals) {
    for (const VariantType type : {VT_R4, VT_R8, VT_DECIMAL}) {
        EXPECT_EQ(written({type, "7.50"}), "7.5");
        EXPECT_EQ(written({type, "1234567"}), "1.23457e+06");
        EXPECT_EQ(written({type, "-0.00001234567"}), "-1.23457e-05");
        EXPECT_EQ(written({type, "100000.000"}), "100000");
    }
}

TEST_F(SqlValues, OfTextTypesStandAsTheyAre) {
    for (const VariantType type : {VT_BSTR, VT_LPSTR, VT_LPWSTR}) {
        EXPECT_EQ(written({type, " \xC3\xA9t\xC3\xA9 \"x\"; "}), " \xC3\xA9t\xC3\xA9 \"x\"; ");
        EXPECT_EQ(written({type, ""}), "");
    }
}

TEST_F(SqlValues, ThatAreBooleanAreOneOrZero) {
    EXPECT_EQ(written({VT_BOOL, -1}), "1");
    EXPECT_EQ(written({VT_BOOL, 1}), "1");
    EXPECT_EQ(written({VT_BOOL, 0}), "0");
}

TEST_F(SqlValues, OfATypeThatCannotBeShownAreItsNumberInHexadecimal) {
    EXPECT_EQ(written(FakeValue::ofType(VT_ERROR)), "Got variant type a");
    EXPECT_EQ(written(FakeValue::ofType(VT_UNKNOWN)), "Got variant type d");
}

TEST_F(SqlValues, OfAllOtherTypesAreEmpty) {
    for (const int type :
         {int{VT_CY}, int{VT_DATE}, int{VT_DISPATCH}, int{VT_VARIANT}, 15, 24, 29, 32, 64, 72,
          VT_ARRAY | VT_UI1, VT_ARRAY | VT_BSTR, VT_ARRAY | VT_ERROR, 0x4000 | VT_I4, 0xFFFF}) {
        FakeValue value = FakeValue::ofType(type);
        value.value.integer = 7;
        value.text = "text";
        EXPECT_EQ(written(value), "") << type;
    }
}

}  // namespace
}  // namespace intake
