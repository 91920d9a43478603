#include "pipeline/script_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace intake {

namespace {

std::string integerText(int64_t number) {
    std::string script;
    appendInteger(script, number);
    return script;
}

}  // namespace

TEST(ScriptText, IntegersAreWrittenInDecimal) {
    EXPECT_EQ(integerText(0), "0");
    EXPECT_EQ(integerText(-12), "-12");
    EXPECT_EQ(integerText(std::numeric_limits<int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(integerText(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
}

TEST(ScriptText, AFramedValueHasTwoDoubleQuotesASideAndIsNotEscaped) {
    std::string script = "a=";
    appendFramed(script, "say \"hi\"; {\\}");
    EXPECT_EQ(script, "a=\"\"say \"hi\"; {\\}\"\"");
}

TEST(ScriptText, AnEmptyFramedValueIsFourDoubleQuotes) {
    std::string script;
    appendFramed(script, "");
    EXPECT_EQ(script, "\"\"\"\"");
}

TEST(ScriptText, ARangeHeadEndsWithTheLastIndex) {
    std::string script;
    appendRangeHead(script, "T", 3);
    appendRangeHead(script, "U", 1);
    EXPECT_EQ(script, "T[0-2]=U[0-0]=");
}

TEST(ScriptText, ARangeHeadOfNoElementsHasTheLastIndexMinusOne) {
    std::string script;
    appendRangeHead(script, "T", 0);
    EXPECT_EQ(script, "T[0--1]=");
}

TEST(ScriptText, TheRecordCountCarriesItsPrefix) {
    std::string script;
    appendRecordCount(script, "", 0);
    appendRecordCount(script, "Left.", 2);
    appendRecordCount(script, "", -4);
    EXPECT_EQ(script, "READER_NUM_RECORDS=0;Left.READER_NUM_RECORDS=2;READER_NUM_RECORDS=-4;");
}

TEST(ScriptText, AFieldArrayOfThreeValues) {
    std::string script;
    appendRangeHead(script, "T", 3);
    const char* separator = "";
    for (const char* const value : {"x", "y", "z"}) {
        script += separator;
        appendFramed(script, value);
        separator = ",";
    }
    script += "; ";
    appendRecordCount(script, "", 3);
    EXPECT_EQ(script, R"(T[0-2]=""x"",""y"",""z""; READER_NUM_RECORDS=3;)");
}

}  // namespace intake
