#include "workbench/cli/serve/request_body.h"

#include <gtest/gtest.h>

using workbench::editRequestIn;
using workbench::isSetIn;
using workbench::objectIn;
using workbench::revisionIn;
using workbench::textIn;
using workbench::truthIn;

TEST(RequestBody, OfAnEditHasARevisionAndValues) {
    const auto request = editRequestIn(
        R"({"revision": 12, "set": {"filename": "a\u00e4b", "queryMode": 3, "autoLoad": true}})");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->revision, 12U);
    using Values = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(request->values,
              (Values{{"filename", "aäb"}, {"queryMode", "3"}, {"autoLoad", "true"}}));
}

TEST(RequestBody, ThatIsNoEditIsNothing) {
    for (const char* const body :
         {"", "{", "[1]", "{}", R"({"revision": 1})", R"({"revision": 1, "set": 2})",
          R"({"revision": 1, "set": {"a": [1]}})"})
        EXPECT_FALSE(editRequestIn(body)) << body;
}

TEST(RequestBody, HasTextsAndSwitches) {
    const std::string body = R"({"token": "abc", "number": 5, "on": true, "off": false})";
    EXPECT_EQ(textIn(body, "token"), "abc");
    EXPECT_EQ(textIn(body, "number"), "");
    EXPECT_EQ(textIn(body, "none"), "");
    EXPECT_EQ(textIn("no json", "token"), "");
    EXPECT_TRUE(isSetIn(body, "on"));
    EXPECT_FALSE(isSetIn(body, "off"));
    EXPECT_FALSE(isSetIn(body, "token"));
}

TEST(RequestBody, SaysWhetherAMemberIsUnclear) {
    const auto body = objectIn(R"({"token": "abc", "number": 5, "on": true, "off": false})");
    ASSERT_TRUE(body);
    EXPECT_EQ(truthIn(*body, "on"), true);
    EXPECT_EQ(truthIn(*body, "off", true), false);
    EXPECT_EQ(truthIn(*body, "none"), std::nullopt);
    EXPECT_EQ(truthIn(*body, "none", true), true);
    EXPECT_EQ(truthIn(*body, "number", true), std::nullopt);
    EXPECT_EQ(textIn(*body, "token"), "abc");
    EXPECT_EQ(textIn(*body, "none", "x"), "x");
    EXPECT_EQ(textIn(*body, "number", "x"), std::nullopt);
}

TEST(RequestBody, IsAnObject) {
    for (const char* const text : {"", "[]", "true", R"({"on": true)"})
        EXPECT_FALSE(objectIn(text)) << text;
}

TEST(RequestBody, SaysWhatThePageKnows) {
    EXPECT_EQ(revisionIn(R"({"revision": 12})"), 12U);
    for (const char* const body : {"", "{}", R"({"revision": "x"})", R"({"revision": ""})",
                                   R"({"revision": 1.5})", R"({"revision": -1})"})
        EXPECT_EQ(revisionIn(body), std::nullopt) << body;
}

TEST(RequestBody, ThatSetsTooMuchIsNothing) {
    std::string many;
    for (int i = 0; i < 201; ++i)
        many += (i == 0 ? "\"p" : ", \"p") + std::to_string(i) + "\": 1";
    EXPECT_FALSE(editRequestIn("{\"revision\": 1, \"set\": {" + many + "}}"));
    const std::string name(101, 'n');
    EXPECT_FALSE(editRequestIn("{\"revision\": 1, \"set\": {\"" + name + "\": 1}}"));
}
