// Plain paths are followed while a document is read, all other expressions in the whole document.
// In brackets, a path is no plain one: so the scripts of both ways can be compared.

#include <gtest/gtest.h>

#include "tests/readers/xml/RandomXml.h"
#include "tests/readers/xml/read.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr unsigned SEEDS = 3000;

std::string inBrackets(const std::string& path) {
    return "(" + path + ")";
}

XmlQuery anyQuery(RandomXml& chance, unsigned seed) {
    XmlQuery query;
    query.xpath = chance.path();
    query.key = chance.key();
    query.mode = static_cast<TargetMode>(chance.upTo(5));
    query.table = chance.upTo(4) == 0 ? "" : "T";
    query.namespaces = RandomXml::NAMESPACES;
    query.markup = chance.upTo(2) == 0;
    query.payload = chance.upTo(8) == 0;
    query.encoding = chance.upTo(4) == 0 ? 2 : 0;
    query.fromRow = chance.upTo(3) == 0 ? static_cast<int32_t>(chance.upTo(4)) - 1 : 0;
    query.numRows = seed % 3 == 0 ? static_cast<int32_t>(chance.upTo(4)) : 1000000;
    return query;
}

TEST(PlainPaths, GiveTheSameScriptAsInTheWholeDocument) {
    for (unsigned seed = 0; seed < SEEDS; ++seed) {
        RandomXml chance(seed);
        const TempDirectory directory;
        const std::string document = chance.perhapsSpoilt(chance.document());
        const XmlQuery plain = anyQuery(chance, seed);
        XmlQuery bracketed = plain;
        bracketed.xpath = inBrackets(plain.xpath);
        bracketed.key = inBrackets(plain.key);

        const std::string file = directory.write("source.xml", document);
        EXPECT_EQ(scriptOf(file, plain), scriptOf(file, bracketed))
            << "seed " << seed << ": " << plain.xpath << ", key " << plain.key << "\n"
            << document;
        if (testing::Test::HasFailure()) {
            return;  // the others say the same
        }
    }
}

}  // namespace
}  // namespace intake
