#include <gtest/gtest.h>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(QuotedText, IsFramedByTwoQuotesOrByOne) {
    EXPECT_EQ(execute(R"(a=""two"";b="one";)"), "a = \"two\"\nb = \"one\"\n");
}

TEST(QuotedText, IsNeverANumber) {
    EXPECT_EQ(execute(R"(a=""5"";b="7.50";c=5;)"), "a = \"5\"\nb = \"7.50\"\nc = 5\n");
}

TEST(QuotedText, KeepsItsWhiteSpace) {
    EXPECT_EQ(execute("a=\"\" x\r\n y \"\";b=\"\t z \";"), "a = \" x\r\n y \"\nb = \"\t z \"\n");
}

TEST(QuotedText, IsEmptyInEitherFrame) {
    EXPECT_EQ(execute(R"(a="""";b="";T[0-1]="""","""";U[0-1]="","",;)"),
              "a = \"\"\nb = \"\"\nT = [0: \"\", 1: \"\"]\nU = [0: \"\", 1: \"\"]\n");
}

TEST(QuotedText, IsEmptyWhenTheOpeningQuotesStandBeforeAClosingBrace) {
    EXPECT_EQ(execute(R"(T={{a=1;},""};)"), "T = [0: {a: 1}, 1: \"\"]\n");
}

TEST(QuotedText, InTwoQuotesMayHoldSingleQuotesSemicolonsAndBraces) {
    EXPECT_EQ(execute(R"(a=""say "hi"; {x}, "y";z"";)"), "a = \"say \"hi\"; {x}, \"y\";z\"\n");
}

TEST(QuotedText, InTwoQuotesMayHoldTwoQuotesWhereNoValueEnds) {
    EXPECT_EQ(execute(R"(a=""x""y"" z"";)"), "a = \"x\"\"y\"\" z\"\n");
}

TEST(QuotedText, InTwoQuotesMayBeginAndEndWithAQuote) {
    EXPECT_EQ(execute(R"(a="""Go" they said "now""";)"), "a = \"\"Go\" they said \"now\"\"\n");
}

TEST(QuotedText, InTwoQuotesEndsAtTwoQuotesBeforeACommaASemicolonOrABrace) {
    EXPECT_EQ(execute(R"(T={""a"",""b"";""c""};)"), "T = [0: \"a\", 1: \"b\", 2: \"c\"]\n");
}

TEST(QuotedText, InOneQuoteEndsAtAQuoteBeforeASemicolon) {
    EXPECT_EQ(execute(R"(a="say "hi", {x}"";b="x";)"), "a = \"say \"hi\", {x}\"\"\nb = \"x\"\n");
}

TEST(QuotedText, MayHoldEveryByteOfUtf8) {
    EXPECT_EQ(execute("a=\"\"Zürich – 東京\"\";"), "a = \"Zürich – 東京\"\n");
}

}  // namespace
}  // namespace cobalt
