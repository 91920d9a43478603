// How a connection string is taken apart.

#include "formats/connection/connection_string.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

std::string show(const ConnectionString& string) {
    std::string shown;
    for (const ConnectionProperty& property : string.properties()) {
        shown += "<" + property.key + "|" + property.value + "|" + property.written + ">";
    }
    return shown;
}

/// The pairs of a text as `<key|value|as written>`, or why it is none.
std::string parsed(const std::string& text) {
    try {
        return show(ConnectionString::parse(text));
    } catch (const ConnectionStringError& failure) {
        return failure.what();
    }
}

TEST(ConnectionStringText, HoldsPairsInTheirOrder) {
    EXPECT_EQ(parsed("Provider=SQLOLEDB;Data Source=db1;User ID=sa"),
              "<Provider|SQLOLEDB|SQLOLEDB><Data Source|db1|db1><User ID|sa|sa>");
    EXPECT_EQ(parsed(""), "");
    EXPECT_EQ(parsed(" ;; ; "), "");
    EXPECT_EQ(parsed(";a=1;;b=2;"), "<a|1|1><b|2|2>");
}

TEST(ConnectionStringText, HasNoMeaningInBlanksAroundKeysAndValues) {
    EXPECT_EQ(parsed("  Data Source \t=\n db 1 ; b= \"x\" \r\n;c=  "),
              "<Data Source|db 1|db 1><b|x|\"x\"><c||>");
}

TEST(ConnectionStringText, EndsAPlainValueAtTheSemicolonOnly) {
    EXPECT_EQ(parsed("a=b=c=;d=it's {so} \"said\""),
              "<a|b=c=|b=c=><d|it's {so} \"said\"|it's {so} \"said\">");
}

TEST(ConnectionStringText, KeepsAnythingInQuotesOfEitherKind) {
    EXPECT_EQ(parsed("a=\" x;y='z \";b=' x;y=\"z '"),
              "<a| x;y='z |\" x;y='z \"><b| x;y=\"z |' x;y=\"z '>");
    EXPECT_EQ(parsed("Extended Properties=\"Excel 12.0 Xml;HDR=YES\";"),
              "<Extended Properties|Excel 12.0 Xml;HDR=YES|\"Excel 12.0 Xml;HDR=YES\">");
    EXPECT_EQ(parsed("a=\"\";b=''"), "<a||\"\"><b||''>");
}

TEST(ConnectionStringText, TakesADoubledQuoteForOne) {
    EXPECT_EQ(parsed(R"(a="say ""hi""";b='it''s')"),
              R"(<a|say "hi"|"say ""hi"""><b|it's|'it''s'>)");
    EXPECT_EQ(parsed(R"(a="""")"), R"(<a|"|"""">)");
}

TEST(ConnectionStringText, KeepsAnythingInBraces) {
    EXPECT_EQ(parsed("Driver={PostgreSQL Unicode};Pwd={a;b}}c'\"};x={}"),
              "<Driver|PostgreSQL Unicode|{PostgreSQL Unicode}>"
              "<Pwd|a;b}c'\"|{a;b}}c'\"}><x||{}>");
}

TEST(ConnectionStringText, FindsAKeyWithoutRegardToCaseAndTheLastOfSeveral) {
    const auto string = ConnectionString::parse("DATA source=a;data Source=b;Database=c");
    ASSERT_NE(string.find("Data Source"), nullptr);
    EXPECT_EQ(string.find("Data Source")->value, "b");
    EXPECT_EQ(string.value("DATABASE"), "c");
    EXPECT_EQ(string.find("Source"), nullptr);
    EXPECT_EQ(string.value("Data"), "");
}

TEST(ConnectionStringText, ThatIsMalformedNamesThePlaceAndShowsNoValue) {
    EXPECT_EQ(parsed("a=1;secret;b=2"),
              "The connection string is wrong at character 5: "
              "there is no \"=\" before the next \";\"");
    EXPECT_EQ(parsed("a=1; =secret"),
              "The connection string is wrong at character 6: there is no key before the \"=\"");
    EXPECT_EQ(parsed("a=\"sec\"\"ret;b=2"),
              "The connection string is wrong at character 3: "
              "the value that begins here is not closed by \"");
    EXPECT_EQ(parsed("a='secret"),
              "The connection string is wrong at character 3: "
              "the value that begins here is not closed by '");
    EXPECT_EQ(parsed("a={secret}};b=2"),
              "The connection string is wrong at character 3: "
              "the value that begins here is not closed by }");
    EXPECT_EQ(parsed("a={x}secret"),
              "The connection string is wrong at character 6: "
              "a value is closed already, and no \";\" follows");
}

TEST(ExtendedProperties, MayBeWordsWithoutAValue) {
    const auto properties =
        ConnectionString::parseExtendedProperties("Excel 12.0 Xml; HDR=YES;;IMEX=1;");
    EXPECT_EQ(show(properties), "<Excel 12.0 Xml||><HDR|YES|YES><IMEX|1|1>");
    EXPECT_NE(properties.find("excel 12.0 xml"), nullptr);
    EXPECT_EQ(properties.value("hdr"), "YES");
}

TEST(ExtendedProperties, AreStillMalformedWhenAValueIsNotClosed) {
    EXPECT_THROW(ConnectionString::parseExtendedProperties("Excel 8.0;HDR='YES"),
                 ConnectionStringError);
}

}  // namespace
}  // namespace intake
