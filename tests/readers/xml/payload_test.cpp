// Payload documents: how they are converted, and how their rows are written.

#include <gtest/gtest.h>

#include "tests/readers/xml/read.h"

namespace intake {
namespace {

/// The converted document, as markup; without the indentation that some systems give it.
std::string converted(const std::string& body) {
    std::string script =
        urlScript(body, {.xpath = "/*", .mode = SHARED_MEMORY, .markup = true, .payload = true});
    if (!script.starts_with("failed: ")) {
        std::erase_if(script,
                      [](char each) { return each == '\r' || each == '\n' || each == '\t'; });
    }
    return script;
}

std::string levels(int count, const std::string& start, const std::string& inner,
                   const std::string& end) {
    std::string text = inner;
    for (int level = 0; level < count; ++level) {
        text = start + text + end;
    }
    return text;
}

constexpr auto TOO_DEEP = "failed: The document is nested deeper than 1000 elements.\n";

TEST(PayloadConversion, MakesEveryFieldAnElementOfItsName) {
    EXPECT_EQ(converted(R"(<payload>
                             <field name="a"><value>1</value></field>
                             <field name="b"><field name="d"><value>x</value></field></field>
                           </payload>)"),
              "<payload><a>1</a><b><d>x</d></b></payload>");
}

TEST(PayloadConversion, OfAFieldWithoutContentIsAnEmptyElement) {
    EXPECT_EQ(converted("<payload><field name='a'/><field name='b'><value/></field></payload>"),
              "<payload><a/><b/></payload>");
}

TEST(PayloadConversion, OfAnEmptyPayloadIsABarePayload) {
    EXPECT_EQ(converted("<payload/>"), "<payload/>");
}

TEST(PayloadConversion, OfABodyThatIsNotXmlIsABarePayload) {
    EXPECT_EQ(converted("404 Not Found"), "<payload/>");
}

TEST(PayloadConversion, OfAnotherRootIsABarePayload) {
    EXPECT_EQ(converted("<data><field name='a'><value>1</value></field></data>"), "<payload/>");
    EXPECT_EQ(converted("<Payload><field name='a'/></Payload>"), "<payload/>");
    EXPECT_EQ(converted("<p:payload xmlns:p='urn:p'><field name='a'/></p:payload>"), "<payload/>");
}

TEST(PayloadConversion, OfARootThatIsAFieldOrAValuePutsItIntoAPayload) {
    EXPECT_EQ(converted("<field name='a'><value>1</value></field>"), "<payload><a>1</a></payload>");
    EXPECT_EQ(converted("<value>1</value>"), "<payload>1</payload>");
}

TEST(PayloadConversion, OfAValueUnderTheRootSetsTheTextOfTheTargetRoot) {
    EXPECT_EQ(converted("<payload><value>top</value></payload>"), "<payload>top</payload>");
    EXPECT_EQ(converted("<payload><value>top</value><field name='a'/></payload>"),
              "<payload>top<a/></payload>");
}

TEST(PayloadConversion, OfAPayloadInsideWritesIntoTheSameElement) {
    EXPECT_EQ(converted("<payload><payload><field name='a'/></payload>"
                        "<field name='b'><payload><value>1</value></payload></field></payload>"),
              "<payload><a/><b>1</b></payload>");
}

TEST(PayloadConversion, OfTwoValuesUnderOneFieldLeavesTheSecond) {
    EXPECT_EQ(converted("<payload><field name='a'><value>1</value><value>2</value></field>"
                        "</payload>"),
              "<payload><a>2</a></payload>");
    EXPECT_EQ(converted("<payload><field name='a'><value>1</value><value/></field></payload>"),
              "<payload><a/></payload>");
}

TEST(PayloadConversion, OfAValueBeforeNestedFieldsKeepsBoth) {
    EXPECT_EQ(converted("<payload><field name='a'><value>1</value>"
                        "<field name='b'><value>2</value></field></field></payload>"),
              "<payload><a>1<b>2</b></a></payload>");
}

TEST(PayloadConversion, OfAValueAfterNestedFieldsReplacesThem) {
    EXPECT_EQ(converted("<payload><field name='a'><field name='b'><value>2</value></field>"
                        "<value>1</value></field></payload>"),
              "<payload><a>1</a></payload>");
}

TEST(PayloadConversion, SkipsOtherElementsWithEverythingInside) {
    EXPECT_EQ(converted("<payload><field name='a'><meta><value>0</value><field name='m'/></meta>"
                        "<value>1</value></field><meta/><Value>2</Value></payload>"),
              "<payload><a>1</a></payload>");
}

TEST(PayloadConversion, KnowsItsElementsByTheirWholeNames) {
    EXPECT_EQ(converted("<payload><fields name='a'/><values>1</values><payloads><field name='b'/>"
                        "</payloads><Field name='c'/><afield name='d'/><v:value xmlns:v='urn:v'>2"
                        "</v:value></payload>"),
              "<payload/>");
}

TEST(PayloadConversion, SkipsTextsCommentsAndInstructions) {
    EXPECT_EQ(converted("<payload>text<!--note--><?app go?><![CDATA[data]]>"
                        "<field name='a'>text<value>1</value><?value 2?>text</field></payload>"),
              "<payload><a>1</a></payload>");
}

TEST(PayloadConversion, TakesTheTextOfAllThatIsInAValue) {
    EXPECT_EQ(converted("<payload><field name='a'><value>x<b>y</b><![CDATA[<z>]]><!--note-->"
                        "<field name='c'/></value></field></payload>"),
              "<payload><a>xy&lt;z&gt;</a></payload>");
}

TEST(PayloadConversion, KeepsFieldsOfOneNameInTheirOrder) {
    EXPECT_EQ(converted("<payload><field name='row'><value>1</value></field>"
                        "<field name='other'/><field name='row'><value>2</value></field>"
                        "</payload>"),
              "<payload><row>1</row><other/><row>2</row></payload>");
}

TEST(PayloadConversion, FailsWithTheSystemsReportForAFieldWithoutAName) {
    EXPECT_EQ(converted("<payload><field><value>1</value></field></payload>")
                  .rfind("failed: Error\n\tCode = 0x", 0),
              0U);
    EXPECT_EQ(converted("<payload><field id='7'><value>x</value></field></payload>")
                  .rfind("failed: Error\n\tCode = 0x", 0),
              0U);
}

TEST(PayloadConversion, FailsWithTheSystemsReportForANameThatNoElementCanHave) {
    for (const std::string name : {"", "two words", "1st", "a&lt;b"}) {
        EXPECT_EQ(converted("<payload><field name='" + name + "'/></payload>")
                      .rfind("failed: Error\n\tCode = 0x", 0),
                  0U)
            << name;
    }
}

TEST(PayloadConversion, FailsForADocumentThatIsTooDeep) {
    EXPECT_EQ(
        converted("<payload>" + levels(999, "<field name='f'>", "", "</field>") + "</payload>"),
        "<payload>" + levels(998, "<f>", "<f/>", "</f>") + "</payload>");
    EXPECT_EQ(
        converted("<payload>" + levels(1000, "<field name='f'>", "", "</field>") + "</payload>"),
        TOO_DEEP);
}

constexpr auto STOCKS = R"(<payload>
  <field name="stock">
    <field name="symbol"><value>KLDBY</value></field>
    <field name="price"><value>310.25</value></field>
    <field name="day"><field name="low"><value>301</value></field>
                      <field name="high"/></field>
  </field>
  <field name="stock">
    <field name="symbol"><value>GRW</value></field>
    <field name="name"><value>Greywharf, Ltd.</value></field>
  </field>
</payload>)";

std::string stocks(TargetMode mode, const std::string& xpath, bool markup = false) {
    return urlScript(
        STOCKS, {.xpath = xpath, .mode = mode, .key = "symbol", .markup = markup, .payload = true});
}

TEST(PayloadRows, AreWrittenWithoutQuotesAndNestAsTheirFieldsDo) {
    const std::string script = stocks(DATA_TABLE, "/payload/stock");
    EXPECT_EQ(script,
              "T[KLDBY]={{symbol=KLDBY;price=310.25;day={low=301;high=;};};};"
              "T[GRW]={{symbol=GRW;name=Greywharf, Ltd.;};};");
    EXPECT_EQ(stored(script),
              "T = [KLDBY: [0: {symbol: \"KLDBY\", price: 310.25, "
              "day: {low: 301, high: \"\"}}], "
              "GRW: [0: {symbol: \"GRW\", name: \"Greywharf, Ltd.\"}]]\n");
}

TEST(PayloadRows, HaveTheFormOfEveryModeAroundThem) {
    EXPECT_EQ(stocks(DATA_ARRAY, "/payload/stock[2]"),
              "T[0]={{symbol=GRW;name=Greywharf, Ltd.;};};READER_NUM_RECORDS=1;");
    EXPECT_EQ(stocks(DATA_STRUCTURE, "/payload/stock[2]"), "T={symbol=GRW;name=Greywharf, Ltd.;};");
    EXPECT_EQ(stocks(DATA_FIELD_ARRAY, "/payload/stock/symbol"),
              R"(T[0-1]=""KLDBY"",""GRW""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stocks(SHARED_MEMORY, "/payload/stock/symbol"), "KLDBY|GRW");
}

TEST(PayloadRows, AreTextsWhateverTheOutputFormat) {
    EXPECT_EQ(stocks(DATA_STRUCTURE, "/payload/stock/day", true), "T={low=301;high=;};");
    EXPECT_EQ(stocks(SHARED_MEMORY, "//price | //high", true), "<price>310.25</price>|<high/>");
}

TEST(PayloadRows, WithoutChildrenHaveNoFields) {
    EXPECT_EQ(stocks(DATA_STRUCTURE, "//high"), "T={};");
}

TEST(PayloadRows, OfMixedContentNameTheirTexts) {
    EXPECT_EQ(urlScript("<payload><field name='a'><value>1</value><field name='b'>"
                        "<value>2</value></field></field></payload>",
                        {.xpath = "/payload", .mode = DATA_STRUCTURE, .payload = true}),
              "T={a={#text=1;b=2;};};");
}

TEST(PayloadRows, OfAFileAreWrittenWithoutAConversion) {
    EXPECT_EQ(fileScript("<payload><field name='a'><value>1</value></field>"
                         "<other>x<!--note--></other></payload>",
                         {.xpath = "/payload", .mode = DATA_STRUCTURE, .payload = true}),
              "T={field={value=1;};other=x;};");
}

TEST(PayloadRows, OfAFileMayHoldNodesOfEveryType) {
    EXPECT_EQ(fileScript("<r>one<!--note--><![CDATA[two]]><?app go?><m>three<e>4</e>five</m></r>",
                         {.xpath = "/r", .mode = DATA_STRUCTURE, .payload = true}),
              "T={#text=one;#comment=note;#cdata-section=two;app=go;"
              "m={#text=three;e=4;#text=five;};};");
}

TEST(PayloadRows, FailWhenTheyAreTooDeep) {
    const auto nested = [](int count) {
        return fileScriptAlone("<r>" + levels(count, "<e>", "", "</e>") + "</r>",
                               {.xpath = "/r", .mode = DATA_STRUCTURE, .payload = true});
    };
    EXPECT_EQ(nested(1000), "T={" + levels(999, "e={", "e=;", "};") + "};");
    EXPECT_EQ(nested(1001), TOO_DEEP);
}

}  // namespace
}  // namespace intake
