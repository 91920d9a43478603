// What each type of variant arrives as.

#include <limits>

#include "platform/windows/com/Variant.h"
#include "tests/platform/windows/ado/AdoDoubles.h"
#include "tests/platform/windows/ado/AdoTest.h"

namespace intake {
namespace {

VARIANT ofType(VARTYPE type) {
    VARIANT variant{};
    variant.vt = type;
    return variant;
}

class AdoValues : public AdoTest {
protected:
    /// What is written for one value.
    std::string written(const VARIANT& value) {
        AdoDoubles ado;
        ado.names = {L"v"};
        ado.records = {{value}};
        AdoDatabases databases(ado.factory());
        std::string result = script(databases, SHARED_MEMORY);
        EXPECT_EQ(ado.calls.living(), 0);
        return result;
    }

    std::string written(std::wstring_view text) {
        VARIANT value = ofType(VT_BSTR);
        value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        std::string result = written(value);
        VariantClear(&value);
        return result;
    }
};

TEST_F(AdoValues, OfNothingAreEmpty) {
    EXPECT_EQ(written(ofType(VT_EMPTY)), "");
    EXPECT_EQ(written(ofType(VT_NULL)), "");
}

TEST_F(AdoValues, OfSignedTypesAreDecimal) {
    VARIANT value = ofType(VT_I1);
    value.cVal = static_cast<CHAR>(-128);
    EXPECT_EQ(written(value), "-128");
    value = ofType(VT_I2);
    value.iVal = std::numeric_limits<SHORT>::min();
    EXPECT_EQ(written(value), "-32768");
    value = ofType(VT_I4);
    value.lVal = std::numeric_limits<LONG>::min();
    EXPECT_EQ(written(value), "-2147483648");
    value = ofType(VT_INT);
    value.intVal = std::numeric_limits<INT>::max();
    EXPECT_EQ(written(value), "2147483647");
    value = ofType(VT_I8);
    value.llVal = std::numeric_limits<LONGLONG>::min();
    EXPECT_EQ(written(value), "-9223372036854775808");
}

TEST_F(AdoValues, OfUnsignedTypesAreDecimal) {
    VARIANT value = ofType(VT_UI1);
    value.bVal = 255;
    EXPECT_EQ(written(value), "255");
    value = ofType(VT_UI2);
    value.uiVal = 65535;
    EXPECT_EQ(written(value), "65535");
    value = ofType(VT_UI4);
    value.ulVal = 4294967295;
    EXPECT_EQ(written(value), "4294967295");
    value = ofType(VT_UINT);
    value.uintVal = 4294967295;
    EXPECT_EQ(written(value), "4294967295");
    value = ofType(VT_UI8);
    value.ullVal = std::numeric_limits<ULONGLONG>::max();
    EXPECT_EQ(written(value), "18446744073709551615");
}

TEST_F(AdoValues, WithAFractionHaveSixSignificantDigits) {
    VARIANT value = ofType(VT_R4);
    value.fltVal = 7.5F;
    EXPECT_EQ(written(value), "7.5");
    value = ofType(VT_R8);
    value.dblVal = 1234567.0;
    EXPECT_EQ(written(value), "1.23457e+06");
    value = ofType(VT_EMPTY);
    wchar_t text[] = L"-12.3456789";
    ASSERT_EQ(VarDecFromStr(text, LOCALE_INVARIANT, 0, &value.decVal), S_OK);
    value.vt = VT_DECIMAL;
    EXPECT_EQ(written(value), "-12.3457");
}

TEST_F(AdoValues, OfTruthAreOneAndZero) {
    VARIANT value = ofType(VT_BOOL);
    value.boolVal = VARIANT_TRUE;
    EXPECT_EQ(written(value), "1");
    value.boolVal = VARIANT_FALSE;
    EXPECT_EQ(written(value), "0");
}

TEST_F(AdoValues, OfTextAreInUtf8) {
    EXPECT_EQ(written(L"\u00e9t\u00e9 \U0001F3C6"), "\xC3\xA9t\xC3\xA9 \xF0\x9F\x8F\x86");
    EXPECT_EQ(written(L""), "");
    EXPECT_EQ(written(ofType(VT_BSTR)), "");
    EXPECT_EQ(written(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST_F(AdoValues, OfTextThatEndsAtAZeroAreInUtf8) {
    wchar_t wide[] = L"\u00e9t\u00e9";
    VARIANT value = ofType(VT_LPWSTR);
    value.byref = wide;
    EXPECT_EQ(written(value), "\xC3\xA9t\xC3\xA9");
    char narrow[] = "summer";
    value = ofType(VT_LPSTR);
    value.byref = narrow;
    EXPECT_EQ(written(value), "summer");
    EXPECT_EQ(written(ofType(VT_LPWSTR)), "");
    EXPECT_EQ(written(ofType(VT_LPSTR)), "");
}

TEST_F(AdoValues, ThatCannotBeShownTellTheirType) {
    EXPECT_EQ(written(ofType(VT_ERROR)), "Got variant type a");
    EXPECT_EQ(written(ofType(VT_UNKNOWN)), "Got variant type d");
}

TEST_F(AdoValues, OfOtherTypesAreEmpty) {
    VARIANT value = ofType(VT_DATE);
    value.date = 45000.5;
    EXPECT_EQ(written(value), "");
    value = ofType(VT_CY);
    value.cyVal.int64 = 123456;
    EXPECT_EQ(written(value), "");
    value = ofType(VT_ARRAY | VT_UI1);
    value.parray = SafeArrayCreateVector(VT_UI1, 0, 4);
    EXPECT_EQ(written(value), "");
    VariantClear(&value);
    EXPECT_EQ(written(ofType(VT_DISPATCH)), "");
}

/// As long as the views of them are used, and not longer.
TEST_F(AdoValues, OfOneRecordDoNotDisturbEachOther) {
    Variant first;
    first.setText("one");
    Variant second;
    second.setText("two");
    AdoDoubles ado;
    ado.names = {L"a", L"b"};
    ado.records = {{first.get(), second.get()}, {second.get(), first.get()}};
    AdoDatabases databases(ado.factory());
    EXPECT_EQ(script(databases, DATA_ARRAY),
              R"(T[0]={{a="one";b="two";};};T[1]={{a="two";b="one";};};READER_NUM_RECORDS=2;)");
}

}  // namespace
}  // namespace intake
