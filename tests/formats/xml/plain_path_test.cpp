// What counts as a plain path. That it finds what the library finds is compared where rows are
// read.

#include "formats/xml/PlainPath.h"

#include <gtest/gtest.h>

#include "tests/readers/xml/RandomXml.h"

namespace intake {

namespace {

bool isPlain(const std::string& expression) {
    const auto anyUri = [](std::string_view) { return std::optional<std::string>("urn:any"); };
    return parsePlainPath(expression, PathStart::DOCUMENT, anyUri).has_value();
}

}  // namespace

TEST(PlainPath, IsWhatMostRandomPathsAre) {
    constexpr unsigned SEEDS = 1000;
    unsigned plainOnes = 0;
    for (unsigned seed = 0; seed < SEEDS; ++seed) {
        plainOnes += isPlain(RandomXml(seed).path()) ? 1 : 0;
    }
    EXPECT_GT(plainOnes, SEEDS / 2);
}

TEST(PlainPath, LeadsDownwards) {
    for (const char* const path :
         {"a", "/a/b", "//a", "/a//p:b[2]/*", "a[@b='c'][d>1]", "a/@b", "//text()"}) {
        EXPECT_TRUE(isPlain(path)) << path;
    }
    for (const char* const path : {"", "/", ".", "..", "(a)", "a|b", "a[last()]", "a[b and c]",
                                   "a[b]/c", "a/following::b", "a[@b=", "a[b<'c']", "count(a)"}) {
        EXPECT_FALSE(isPlain(path)) << path;
    }
}

}  // namespace intake
