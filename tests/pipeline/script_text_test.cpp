#include "pipeline/script_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

namespace intake {

namespace {

std::string numberText(double number) {
    std::string script;
    appendNumber(script, number);
    return script;
}

std::string integerText(int64_t number) {
    std::string script;
    appendInteger(script, number);
    return script;
}

std::string streamText(double number) {
    std::ostringstream out;
    out << number;
    return out.str();
}

double randomDouble(std::mt19937_64& random) {
    const uint64_t bits = random();
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

}  // namespace

TEST(ScriptText, IntegersAreWrittenInDecimal) {
    EXPECT_EQ(integerText(0), "0");
    EXPECT_EQ(integerText(-12), "-12");
    EXPECT_EQ(integerText(std::numeric_limits<int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(integerText(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
}

TEST(ScriptText, NumbersHaveSixSignificantDigits) {
    EXPECT_EQ(numberText(1234567), "1.23457e+06");
    EXPECT_EQ(numberText(123456), "123456");
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(2), "2");
    EXPECT_EQ(numberText(7.50), "7.5");
    EXPECT_EQ(numberText(-0.00001234567), "-1.23457e-05");
    EXPECT_EQ(numberText(-0.0), "-0");
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "inf");
}

TEST(ScriptText, ANumberThatIsRoundedUpToAMillionHasAnExponent) {
    EXPECT_EQ(numberText(999999.4), "999999");
    EXPECT_EQ(numberText(999999.7), "1e+06");
    EXPECT_EQ(numberText(-999999.7), "-1e+06");
}

TEST(ScriptText, EveryNumberIsWrittenAsAStreamWritesIt) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const double number = randomDouble(random);
        if (!std::isnan(number)) {
            ASSERT_EQ(numberText(number), streamText(number));
        }
    }
}

TEST(ScriptText, EveryNumberOfFewDigitsIsWrittenAsAStreamWritesIt) {
    std::mt19937_64 random(2);
    std::uniform_int_distribution<int> digits(-9'999'999, 9'999'999);
    std::uniform_int_distribution<int> exponents(-5, 6);
    for (int i = 0; i < 200'000; ++i) {
        const double number = digits(random) * std::pow(10.0, -exponents(random));
        ASSERT_EQ(numberText(number), streamText(number));
        const double next = std::nextafter(number, 1e9);
        ASSERT_EQ(numberText(next), streamText(next));
    }
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
