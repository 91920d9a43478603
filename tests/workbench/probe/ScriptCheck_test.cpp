#include "workbench/probe/explain/ScriptCheck.h"

#include <gtest/gtest.h>

namespace probe {

namespace {

Settings settingsFor(QueryType type) {
    Settings settings;
    settings.queryMode = type;
    settings.mode = TargetMode::DataArray;
    return settings;
}

// JSON frames values by two quotes on each side, XML by one.
const Settings doubled = settingsFor(QueryType::Json);
const Settings single = settingsFor(QueryType::Xml);
const Settings ofQuery = settingsFor(QueryType::Sql);
const Settings ofSheet = settingsFor(QueryType::Excel);

State stateOf(const ScriptCheck& check) {
    Ladder ladder;
    check.tell(ladder);
    return ladder.at(Stage::Script).state;
}

State stateOfValue(const Settings& settings, std::string_view value) {
    ScriptCheck check(settings);
    check.value("v", value);
    return stateOf(check);
}

State stateOfName(std::string_view name) {
    ScriptCheck check(doubled);
    check.name(name);
    return stateOf(check);
}

TEST(ScriptCheck, LetsThroughWhatTheStoreTakesWhole) {
    for (const char* value : {"", "plain", "a;b", "a = {b}", "say \"no\" to it", "]"})
        EXPECT_EQ(stateOfValue(doubled, value), State::Ok) << value;
    for (const char* name : {"a", "two words", "#text", "p:price"})
        EXPECT_EQ(stateOfName(name), State::Ok) << name;
}

TEST(ScriptCheck, FindsValuesThatEndTheirFrame) {
    EXPECT_EQ(stateOfValue(doubled, "a\"\";b=\"\"c"), State::Warning);
    EXPECT_EQ(stateOfValue(single, "a\";b=\"c"), State::Warning);
    EXPECT_EQ(stateOfValue(single, "a\"\";b"), State::Warning);
    EXPECT_EQ(stateOfValue(ofQuery, "a\";b=\"c"), State::Warning);
    EXPECT_EQ(stateOfValue(ofSheet, "a\";b=\"c"), State::Warning);
    EXPECT_EQ(stateOfValue(doubled, "a\";b=\"c"), State::Ok);
}

TEST(ScriptCheck, FindsTextsWhoseFirstSignEndsDoubledQuotes) {
    for (const char* text : {",a", ";a", "}a", ";};};Score=9;T[9]={{a="}) {
        EXPECT_EQ(stateOfValue(doubled, text), State::Warning) << text;
        EXPECT_EQ(stateOfValue(single, text), State::Ok) << text;
    }
    EXPECT_EQ(stateOfValue(doubled, "a,;}"), State::Ok);
}

TEST(ScriptCheck, FindsNamesThatAScriptCannotCarry) {
    for (const char* name : {"", "a=b", "a[0]", "{a"})
        EXPECT_EQ(stateOfName(name), State::Warning) << name;
}

TEST(ScriptCheck, FindsKeysThatAreAnotherOneInBrackets) {
    for (const char* key : {"7-9", "2027-05", "a]b"}) {
        ScriptCheck check(doubled);
        check.key(key);
        EXPECT_EQ(stateOf(check), State::Warning) << key;
    }
    ScriptCheck check(doubled);
    check.key("2027-05-01");
    EXPECT_EQ(stateOf(check), State::Ok);
}

TEST(ScriptCheck, FindsNamesThatComeTwiceInARecord) {
    ScriptCheck check(doubled);
    check.record({"a", "b"});
    check.record({"b", "a"});
    EXPECT_EQ(stateOf(check), State::Ok);
    for (int i = 0; i < 2; ++i)
        check.record({"a", "c", "b", "a", "a", "c"});
    Ladder ladder;
    check.tell(ladder);
    EXPECT_EQ(ladder.at(Stage::Script).cause,
              "The name \"a\" comes twice in a record; the last value counts. There is 1 more.");
}

TEST(ScriptCheck, FindsKeysThatNameNoStructure) {
    Settings named = doubled;
    named.mode = TargetMode::DataStructure;
    const auto stateOfKey = [&named](const char* key) {
        ScriptCheck check(named);
        check.key(key);
        return stateOf(check);
    };
    for (const char* key : {"a=b", "a[0]", ""})
        EXPECT_EQ(stateOfKey(key), State::Warning) << key;
    for (const char* key : {"1-3", "a]b", "two words"})
        EXPECT_EQ(stateOfKey(key), State::Ok) << key;
}

TEST(ScriptCheck, NamesWhatIsSetBehindTheEndOfAValue) {
    ScriptCheck check(doubled);
    check.value("text", "so\"\";Score=\"\"9");
    Ladder ladder;
    check.tell(ladder);
    EXPECT_NE(ladder.at(Stage::Script).cause.find("it sets Score"), std::string::npos)
        << ladder.at(Stage::Script).cause;
}

}  // namespace

}  // namespace probe
