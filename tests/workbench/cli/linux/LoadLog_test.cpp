#include "workbench/cli/serve/LoadLog.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

using workbench::LoadEvent;
using workbench::LoadLog;

namespace {

LoadEvent loadOf(std::uint32_t writer) {
    LoadEvent event;
    event.writer = writer;
    return event;
}

std::string league(std::uint32_t /*writer*/) {
    return "league";
}

rapidjson::Document parsed(const std::string& text) {
    rapidjson::Document json;
    json.Parse(text.c_str());
    EXPECT_FALSE(json.HasParseError()) << text;
    return json;
}

}  // namespace

TEST(LoadLog, KeepsTheLastFiveHundredLoadsOfAnInstance) {
    LoadLog log(league);
    log.add(loadOf(2));
    for (int i = 0; i < 501; ++i)
        log.add(loadOf(1));
    const auto page = parsed(log.history(1, 499, 10));
    EXPECT_EQ(page["count"].GetInt(), 500);
    ASSERT_EQ(page["loads"].Size(), 1U);
    EXPECT_EQ(page["loads"][0]["id"].GetInt(), 3);
    EXPECT_EQ(parsed(log.history(2, 0, 10))["count"].GetInt(), 1);
    EXPECT_EQ(parsed(log.latest()).Size(), 101U);
}

TEST(LoadLog, TellsEachLoadOnce) {
    LoadLog log(league);
    EXPECT_EQ(log.takeNew(), "");
    log.add(loadOf(1));
    log.add(loadOf(2));
    EXPECT_EQ(parsed(log.takeNew()).Size(), 2U);
    EXPECT_EQ(log.takeNew(), "");
}

TEST(LoadLog, KeepsTwentyExplanationsOfAnInstance) {
    LoadLog log(league);
    for (int i = 1; i <= 21; ++i)
        log.explain(1, log.add(loadOf(1)), "{\"ok\": false}");
    EXPECT_TRUE(parsed(*log.explained(1, 1))["explanation"].IsNull());
    EXPECT_FALSE(parsed(*log.explained(1, 2))["explanation"]["ok"].GetBool());
    EXPECT_TRUE(parsed(log.history(1, 0, 1))["loads"][0]["ladder"].GetBool());
}

TEST(LoadLog, KeepsNoExplanationThatIsFarTooLong) {
    LoadLog log(league);
    const auto load = log.add(loadOf(1));
    log.explain(1, load, "\"" + std::string(300'000, 'x') + "\"");
    EXPECT_TRUE(parsed(*log.explained(1, load))["explanation"].IsNull());
}

TEST(LoadLog, ForgetsInstancesThatAreGone) {
    LoadLog log(league);
    const auto load = log.add(loadOf(1));
    log.add(loadOf(2));
    log.keepOnly({2});
    EXPECT_EQ(log.explained(1, load), std::nullopt);
    EXPECT_EQ(parsed(log.latest()).Size(), 1U);
}

TEST(LoadLog, TellsLoadsByTheNameThatTheirInstanceHasNow) {
    std::string name = "league";
    LoadLog log([&name](std::uint32_t) { return name; });
    const auto load = log.add(loadOf(1));
    name = "cup";
    EXPECT_STREQ(parsed(log.takeNew())[0]["instance"].GetString(), "cup");
    EXPECT_STREQ(parsed(log.latest())[0]["instance"].GetString(), "cup");
    EXPECT_STREQ(parsed(log.history(1, 0, 1))["loads"][0]["instance"].GetString(), "cup");
    EXPECT_STREQ(parsed(*log.explained(1, load))["load"]["instance"].GetString(), "cup");
}
