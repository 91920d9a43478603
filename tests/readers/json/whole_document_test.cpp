// Without a path the whole document is written: every shape of a value as the data store takes it.

#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

std::string whole(std::string_view source) {
    return script(source, {.table = "n"});
}

std::string storedWhole(std::string_view source) {
    return stored(source, {.table = "n"});
}

TEST(JsonWholeDocument, AnObjectIsAStructureOfTheTargetsName) {
    EXPECT_EQ(whole(R"({"a":1,"b":"x"})"), R"(n={a=1;b=""x"";};)");
    EXPECT_EQ(whole("{}"), "n={};");
    EXPECT_EQ(storedWhole(R"({"a":1,"b":"x"})"), "n = {a: 1, b: \"x\"}\n");
}

TEST(JsonWholeDocument, AScalarIsAFieldAndNullIsNothing) {
    EXPECT_EQ(whole("\"x\""), R"(n=""x"";)");
    EXPECT_EQ(whole("7.50"), "n=7.5;");
    EXPECT_EQ(whole("true"), "n=1;");
    EXPECT_EQ(whole("false"), "n=0;");
    EXPECT_EQ(whole("null"), "");
}

TEST(JsonWholeDocument, AFlatArrayKeepsItsLastCommaAndLeavesNullOut) {
    EXPECT_EQ(whole(R"(["a",2,true,null])"), R"(n[0-3]=""a"",2,1,;)");
    EXPECT_EQ(whole(R"([null,"a"])"), R"(n[0-1]=""a"",;)");
    EXPECT_EQ(whole("[null]"), "n[0-0]=;");
    EXPECT_EQ(whole("[false]"), "n[0-0]=0,;");
}

TEST(JsonWholeDocument, AnEmptyArrayIsAnEmptyRange) {
    EXPECT_EQ(whole("[]"), "n[0--1]=;");
    EXPECT_EQ(whole(R"({"tags":[]})"), "n={tags[0--1]=;};");
    EXPECT_EQ(storedWhole(R"({"tags":[]})"), "n = {tags: []}\n");
}

TEST(JsonWholeDocument, ObjectsInAnArrayHaveNoNames) {
    EXPECT_EQ(whole(R"([{"a":1},{},{"b":"x","c":null}])"), R"(n[0-2]={{a=1;},{},{b=""x"";},};)");
    EXPECT_EQ(storedWhole(R"([{"a":1},{"b":2}])"), "n = [0: {a: 1}, 1: {b: 2}]\n");
}

TEST(JsonWholeDocument, ArraysInAnArrayAreRangesWithoutNames) {
    EXPECT_EQ(whole("[[1,2],[],[[3]]]"), "n[0-2]={[0-1]=1,2,;[0--1]=;[0-0]={[0-0]=3,;};};");
    EXPECT_EQ(storedWhole("[[1,2],[3]]"), "n = [0: [0: 1, 1: 2], 1: [0: 3]]\n");
}

TEST(JsonWholeDocument, ScalarsBesideContainersAreAssignmentsWithoutNames) {
    EXPECT_EQ(whole(R"([1,{"a":2},"x",true,null,[]])"),
              R"(n[0-5]={=1;{a=2;},=""x"";=1;[0--1]=;};)");
    EXPECT_EQ(storedWhole(R"([1,{"a":2},"x"])"), "n = [0: 1, 1: {a: 2}, 2: \"x\"]\n");
}

TEST(JsonWholeDocument, NestingAlternatesAsDeepAsTheDocument) {
    EXPECT_EQ(whole(R"({"a":{"b":[{"c":[[{"d":{"e":1}}]]},2]},"f":3})"),
              "n={a={b[0-1]={{c[0-0]={[0-0]={{d={e=1;};},};};},=2;};};f=3;};");
}

TEST(JsonWholeDocument, NullMembersAreLeftOut) {
    EXPECT_EQ(whole(R"({"a":null,"b":1,"c":null})"), "n={b=1;};");
}

TEST(JsonWholeDocument, NumbersHaveSixSignificantDigits) {
    EXPECT_EQ(whole("[1234567,7.50,48.0512345,-0,1e400,-1e400,1e-400]"),
              "n[0-6]=1.23457e+06,7.5,48.0512,-0,inf,-inf,0,;");
}

TEST(JsonWholeDocument, TextsAndNamesAreCopiedAsTheyAre) {
    EXPECT_EQ(whole("{\"Z\xC3\xBCrich (ZH)\":\"\xE2\x82\xAC 5; {x}\"}"),
              "n={Z\xC3\xBCrich (ZH)=\"\"\xE2\x82\xAC 5; {x}\"\";};");
    EXPECT_EQ(whole(R"({"q":"say \"hi\" now","p":"C:\\a\/b","l":"1\r\n2"})"),
              "n={q=\"\"say \"hi\" now\"\";p=\"\"C:\\a/b\"\";l=\"\"1\r\n2\"\";};");
    EXPECT_EQ(storedWhole(R"({"q":"say \"hi\"; now"})"), "n = {q: \"say \"hi\"; now\"}\n");
}

TEST(JsonWholeDocument, EmptyNamesAndTextsAreKept) {
    EXPECT_EQ(whole(R"({"e":"","":1})"), R"(n={e="""";=1;};)");
    EXPECT_EQ(storedWhole(R"({"e":"","":1})"), "n = {e: \"\", : 1}\n");
}

TEST(JsonWholeDocument, MembersOfOneNameAreAllWrittenAndTheLastStays) {
    EXPECT_EQ(whole(R"({"a":1,"b":2,"a":3})"), "n={a=1;b=2;a=3;};");
    EXPECT_EQ(storedWhole(R"({"a":1,"b":2,"a":3})"), "n = {a: 3, b: 2}\n");
}

TEST(JsonWholeDocument, NoCountIsWrittenInAnyMode) {
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        EXPECT_EQ(script(R"({"id":"k"})", {.mode = mode, .key = "id", .prefix = "P_"}),
                  R"(T={id=""k"";};)");
    }
}

TEST(JsonWholeDocument, TheEmptyTargetNameIsWrittenAsItIs) {
    EXPECT_EQ(read(R"({"a":1})", {}).script, "={a=1;};");
}

}  // namespace
}  // namespace intake
