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

}  // namespace
}  // namespace intake
