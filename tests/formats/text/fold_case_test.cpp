#include "formats/text/fold_case.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

TEST(FoldCase, MakesLettersOfAnyScriptLowerCase) {
    EXPECT_EQ(foldCase("Ol\u00C1 \u0416 \u03A9 \u0130 \U00010400"),
              "ol\u00E1 \u0436 \u03C9 i \U00010428");
}

TEST(FoldCase, KnowsTheLettersAtTheEndsOfARun) {
    EXPECT_EQ(foldCase("\u00C0\u00D6\u00D7\u00D8\u00DE\u00DF"),
              "\u00E0\u00F6\u00D7\u00F8\u00FE\u00DF");
    EXPECT_EQ(foldCase("\u0100\u0101\u0102\u012E\u012F"), "\u0101\u0101\u0103\u012F\u012F");
}

TEST(FoldCase, LeavesAllElseAsItIs) {
    EXPECT_EQ(foldCase("a1 _$ \u00DF \u4E2D \U0001F600"), "a1 _$ \u00DF \u4E2D \U0001F600");
    EXPECT_EQ(foldCase(""), "");
    EXPECT_EQ(foldCase("A\xFF"), "A\xFF");  // no UTF-8
}

}  // namespace
}  // namespace intake
