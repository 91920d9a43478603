// Attributes that nobody asks for may be left out of the whole document, which no script shows. A
// literal that looks like one keeps them: so the scripts with and without them can be compared.

#include <gtest/gtest.h>

#include "tests/readers/xml/RandomXml.h"
#include "tests/readers/xml/read.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr unsigned SEEDS = 3000;

/// Finds what `expression` finds, in a document with all attributes.
std::string withAttributes(const std::string& expression) {
    return "(" + expression + ")['@']";
}

/// An expression that is no plain path.
std::string anyExpression(RandomXml& chance) {
    const std::string path = chance.path();
    switch (chance.upTo(4)) {
        case 0:
            return "(" + path + ")";
        case 1:
            return path + " | " + chance.path();
        case 2:
            return path + chance.pick({"/..", "/ancestor-or-self::*", "//node()", "/namespace::*",
                                       "/following::node()", "/preceding-sibling::*",
                                       "/self::node()", "/attribute::*", "/descendant::text()"});
        default:
            return "(" + path + ")" +
                   chance.pick({"[last()]", "[name()='b']", "[not(*)]", "[string-length(.)>1]",
                                "[count(.//node())>2]", "[lang('en')]", "[namespace-uri()]",
                                "[id('1')]", "[position()>2]", "[local-name(..)='a']"});
    }
}

XmlQuery anyQuery(RandomXml& chance) {
    XmlQuery query;
    query.xpath = anyExpression(chance);
    query.key = chance.key();
    query.mode = static_cast<TargetMode>(chance.upTo(5));
    query.table = chance.upTo(4) == 0 ? "" : "T";
    query.namespaces = RandomXml::NAMESPACES;
    query.markup = chance.upTo(4) == 0;
    query.payload = chance.upTo(8) == 0;
    return query;
}

TEST(UnwantedAttributes, AreMissedByNoScript) {
    for (unsigned seed = 0; seed < SEEDS; ++seed) {
        RandomXml chance(seed);
        const TempDirectory directory;
        const std::string document = chance.perhapsSpoilt(chance.document());
        const XmlQuery query = anyQuery(chance);
        XmlQuery whole = query;
        whole.xpath = withAttributes(query.xpath);
        whole.key = withAttributes(query.key);

        const std::string file = directory.write("source.xml", document);
        EXPECT_EQ(scriptOf(file, query), scriptOf(file, whole))
            << "seed " << seed << ": " << query.xpath << ", key " << query.key << "\n"
            << document;
        if (testing::Test::HasFailure()) {
            return;  // the others say the same
        }
    }
}

constexpr auto ROWS = "<d><r id='1' xml:lang='en'><n>one</n></r><r id='2'><n>two</n></r></d>";

TEST(UnwantedAttributes, AreInTheMarkupOfRowsAllTheSame) {
    const std::string script =
        fileScript(ROWS, {.xpath = "(/d/r)", .mode = SHARED_MEMORY, .markup = true});
    EXPECT_EQ(script, "<r id=\"1\" xml:lang=\"en\"><n>one</n></r>|<r id=\"2\"><n>two</n></r>");
}

TEST(UnwantedAttributes, AreThoseThatNeitherTheExpressionNorTheKeyAsksFor) {
    EXPECT_EQ(fileScript(ROWS, {.xpath = "(/d/r)", .mode = DATA_TABLE, .key = "@id"}),
              "T[1]={{n=\"one\";};};T[2]={{n=\"two\";};};");
    EXPECT_EQ(fileScript(ROWS, {.xpath = "(/d/r)", .mode = DATA_TABLE, .key = "n"}),
              "T[one]={{n=\"one\";};};T[two]={{n=\"two\";};};");
    for (const char* const expression :
         {"(/d/r[@id='1'])", "/d/r[attribute::id='1']", "(/d/r)[lang('en')]"}) {
        EXPECT_EQ(fileScript(ROWS, {.xpath = expression, .mode = SHARED_MEMORY}), "one")
            << expression;
    }
}

TEST(UnwantedAttributes, AreReadByAPayloadAllTheSame) {
    EXPECT_EQ(urlScript("<payload><field name='r'><field name='n'><value>1</value></field></field>"
                        "</payload>",
                        {.xpath = "(/payload/r)", .payload = true}),
              "T[0]={{n=1;};};READER_NUM_RECORDS=1;");
}

}  // namespace
}  // namespace intake
