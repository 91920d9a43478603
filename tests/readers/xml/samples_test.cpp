// The sample sources give what the guide to XML sources and the sample scenes promise.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/readers/xml/read.h"

namespace intake {
namespace {

std::string sample(const std::string& name) {
    std::ifstream file(SOURCE_ROOT "/samples/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

constexpr auto FIXTURES = "xmlns:f='urn:tidewater:fixtures' xmlns:b='urn:tidewater:broadcast'";

TEST(XmlSamples, HaveTheScoresOfTheFixturesByMatch) {
    EXPECT_EQ(fileScript(sample("fixtures.xml"), {.xpath = "/f:fixtures/f:match/f:score",
                                                  .mode = DATA_TABLE,
                                                  .key = "../@id",
                                                  .table = "Scores",
                                                  .namespaces = FIXTURES}),
              R"(Scores[m281]={{home="2";away="2";};};)"
              R"(Scores[m282]={{home="1";away="0";};};)"
              R"(Scores[m283]={{home="0";away="3";};};)");
}

TEST(XmlSamples, HaveTheHomeTeamsOfTheMatchesOnTelevision) {
    EXPECT_EQ(fileScript(sample("fixtures.xml"), {.xpath = "//f:match[b:channel]/f:home/@code",
                                                  .mode = DATA_FIELD_ARRAY,
                                                  .table = "Televised",
                                                  .namespaces = FIXTURES,
                                                  .prefix = "TV_"}),
              R"(Televised[0-2]=""HOL"",""ESK"",""QUA""; TV_READER_NUM_RECORDS=3;)");
}

TEST(XmlSamples, HaveTheFirstTitlesOfTheFeed) {
    EXPECT_EQ(fileScript(sample("headlines.xml"), {.xpath = "/rss/channel/item/title",
                                                   .mode = DATA_FIELD_ARRAY,
                                                   .table = "News",
                                                   .numRows = 2}),
              "News[0-1]=\"\"Harbour bridge reopens two weeks early\"\","
              "\"\"“Nobody expected this”: Kelderby’s library wins prize\"\"; "
              "READER_NUM_RECORDS=2;");
}

TEST(XmlSamples, HaveTheStationsOfTheWeatherByName) {
    EXPECT_EQ(urlScript(sample("weather.xml"), {.xpath = "/payload/station",
                                                .mode = DATA_TABLE,
                                                .key = "name",
                                                .table = "Stations",
                                                .payload = true}),
              "Stations[Hollinbeck]={{name=Hollinbeck;temperature=7.5;sky=rain;"
              "wind={speed=62;gusts=95;from=SW;};};};"
              "Stations[Greywharf]={{name=Greywharf;temperature=6.0;sky=showers;"
              "wind={speed=41;gusts=70;from=SW;};};};"
              "Stations[Kelderby]={{name=Kelderby;temperature=8.0;sky=cloudy;"
              "wind={speed=22;gusts=38;from=W;};};};");
}

TEST(XmlSamples, HaveTheStormyStationsOfTheWeather) {
    EXPECT_EQ(urlScript(sample("weather.xml"), {.xpath = "/payload/station[wind/gusts >= 60]/name",
                                                .mode = DATA_FIELD_ARRAY,
                                                .table = "Stormy",
                                                .prefix = "STORM_",
                                                .payload = true}),
              R"(Stormy[0-1]=""Hollinbeck"",""Greywharf""; STORM_READER_NUM_RECORDS=2;)");
}

}  // namespace
}  // namespace intake
