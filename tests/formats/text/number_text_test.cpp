#include "formats/text/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace intake {
namespace {

TEST(ParseWhole, ReadsATextThatIsANumberFromItsStartToItsEnd) {
    EXPECT_EQ(parseWhole<int64_t>("-7"), -7);
    EXPECT_EQ(parseWhole<double>("1.5e3"), 1500);
    EXPECT_EQ(parseWhole<uint32_t>("fF", 16), 255U);
    for (const char* const text : {"", " 1", "1 ", "1x", "x", "+1", "1.5"}) {
        EXPECT_FALSE(parseWhole<int64_t>(text)) << text;
    }
    EXPECT_FALSE(parseWhole<int8_t>("128"));
}

TEST(ShortestNumber, SaysTheNumberExactly) {
    EXPECT_EQ(shortestNumber(0.1), "0.1");
    EXPECT_EQ(shortestNumber(1501.0849999999998), "1501.0849999999998");
    EXPECT_EQ(shortestNumber(-0.0), "-0");
}

TEST(GeneralNumber, HasNoMoreDigitsThanAWorksheetShows) {
    EXPECT_EQ(generalNumber(100000), "100000");
    EXPECT_EQ(generalNumber(-1.5), "-1.5");
    EXPECT_EQ(generalNumber(1.0 / 3), "0.333333333");
    EXPECT_EQ(generalNumber(-2.0 / 3), "-0.666666667");
    EXPECT_EQ(generalNumber(0.1 + 0.2), "0.3");
    EXPECT_EQ(generalNumber(1234567.891234), "1234567.891");
    EXPECT_EQ(generalNumber(12345678901), "12345678901");
    EXPECT_EQ(generalNumber(0.0001), "0.0001");
    EXPECT_EQ(generalNumber(0), "0");
    EXPECT_EQ(generalNumber(-0.0), "0");
}

TEST(GeneralNumber, HasAnExponentWhereItWouldBeTooLong) {
    EXPECT_EQ(generalNumber(123456789012), "1.23457E+11");
    EXPECT_EQ(generalNumber(1e20), "1E+20");
    EXPECT_EQ(generalNumber(0.00001234), "1.234E-05");
    EXPECT_EQ(generalNumber(-1e-300), "-1E-300");
}

}  // namespace
}  // namespace intake
