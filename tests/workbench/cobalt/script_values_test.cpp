#include <gtest/gtest.h>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(Script, AnEmptyTextDoesNothing) {
    EXPECT_EQ(execute(""), "");
}

TEST(Script, EmptyStatementsAndWhiteSpaceBetweenStatementsDoNothing) {
    EXPECT_EQ(execute(" ;; \r\n\t;a=1;;\n ; b=2; \r\r\n"), "a = 1\nb = 2\n");
}

TEST(Script, FieldsStandInTheOrderOfTheirFirstAssignment) {
    EXPECT_EQ(execute("b=1;a=2;b=3;"), "b = 3\na = 2\n");
}

TEST(Script, ANumberKeepsItsWriting) {
    EXPECT_EQ(execute("a=7.50;b=1.23457e+06;c=-3;d=.5;e=007;"),
              "a = 7.50\nb = 1.23457e+06\nc = -3\nd = .5\ne = 007\n");
}

TEST(Script, AnUnquotedValueThatIsNoNumberIsText) {
    EXPECT_EQ(execute("a=Main Street;b=inf;c=12 points;d=1.2.3;e=+3;f=-;"),
              "a = \"Main Street\"\nb = \"inf\"\nc = \"12 points\"\nd = \"1.2.3\"\ne = \"+3\"\n"
              "f = \"-\"\n");
}

TEST(Script, AnUnquotedValueOfAPlainNameRunsToTheSemicolon) {
    EXPECT_EQ(execute("s={city=Springfield, {North}=1;price=12,50;};"),
              "s = {city: \"Springfield, {North}=1\", price: \"12,50\"}\n");
}

TEST(Script, AnUnquotedValueAmongOthersRunsToTheCommaOrTheSemicolon) {
    EXPECT_EQ(execute("T[0-2]=one,two words,3;T[k]=a b,c;"),
              "T = [0: \"one\", 1: \"two words\", 2: 3, k: [0: \"a b\", 1: \"c\"]]\n");
}

TEST(Script, NoValueIsAnEmptyText) {
    EXPECT_EQ(execute("a=;T[0]=;s={b=;};"), "a = \"\"\nT = [0: \"\"]\ns = {b: \"\"}\n");
}

TEST(Script, WhiteSpaceAroundNamesAndUnquotedValuesIsNoPartOfThem) {
    EXPECT_EQ(execute("\n Home team \t=  Red Lions \r\n; T[0] = 5 ;"),
              "Home team = \"Red Lions\"\nT = [0: 5]\n");
}

TEST(Script, ANameMayHoldAnythingUpToTheEqualsSignOrTheBracket) {
    EXPECT_EQ(execute("x={#text=\"..\";p:price=1;Goals, home=2;a;b}c\"{d=3;Zürich (ZH)=4;};"),
              "x = {#text: \"..\", p:price: 1, Goals, home: 2, a;b}c\"{d: 3, Zürich (ZH): 4}\n");
}

TEST(Script, AKeyIsTheWholeTextUpToTheClosingBracket) {
    EXPECT_EQ(execute("T[ a=b;{c} ]=1;T[]=2;T[x-1]=3;T[-1-2]=4;T[1-]=5;T[1-2-3]=6;"),
              "T = [ a=b;{c} : 1, : 2, x-1: 3, -1-2: 4, 1-: 5, 1-2-3: 6]\n");
}

TEST(Script, AnEntryLeavesTheOtherEntriesAsTheyAre) {
    EXPECT_EQ(execute("T[a]=1;T[b]=2;T[a]=3;"), "T = [a: 3, b: 2]\n");
}

TEST(Script, AnEntryOfAStructureIsItsMember) {
    EXPECT_EQ(execute("s={a=1;};s[a]=2;s[b]=3;"), "s = {a: 2, b: 3}\n");
}

TEST(Script, AnEntryTurnsATextOrANumberIntoAnArray) {
    EXPECT_EQ(execute("a=1;a[k]=2;b=x;b[0-0]=3;"), "a = [k: 2]\nb = [0: 3]\n");
}

TEST(Script, AValueForTheWholeNameReplacesWhatWasThere) {
    EXPECT_EQ(execute("s={a=1;b=2;};s={c=3;};T[0]=1;T=2;"), "s = {c: 3}\nT = 2\n");
}

TEST(Script, ValuesSeparatedByCommasAreAList) {
    EXPECT_EQ(execute("a=\"\"x\"\",\"\"y\"\",2;T[k]=1,{b=2;},;"),
              "a = [0: \"x\", 1: \"y\", 2: 2]\nT = [k: [0: 1, 1: {b: 2}]]\n");
}

TEST(Script, OneValueWithACommaIsAListAndWithoutOneIsItself) {
    EXPECT_EQ(execute("a=\"\"x\"\",;b=\"\"x\"\";T[0]=1,;T[1]=1;"),
              "a = [0: \"x\"]\nb = \"x\"\nT = [0: [0: 1], 1: 1]\n");
}

TEST(Script, NothingBetweenTwoCommasIsAnEmptyText) {
    EXPECT_EQ(execute("T[k]=1,,2;"), "T = [k: [0: 1, 1: \"\", 2: 2]]\n");
}

TEST(Script, MembersOfAStructureAreAssignmentsOfAllKinds) {
    EXPECT_EQ(execute("s={a=1;b[k]=2;b[0-1]=3,4;c={d=\"\"x\"\";};};"),
              "s = {a: 1, b: [k: 2, 0: 3, 1: 4], c: {d: \"x\"}}\n");
}

TEST(Script, AMemberThatIsAssignedTwiceKeepsTheLastValueInTheFirstPlace) {
    EXPECT_EQ(execute("s={a=1;b=2;a=3;};"), "s = {a: 3, b: 2}\n");
}

TEST(Script, WhiteSpaceAndEmptyStatementsMayStandInAStructure) {
    EXPECT_EQ(execute("s = {\n  a = 1 ;;\n  b = { c = 2; } ;\n} ;"), "s = {a: 1, b: {c: 2}}\n");
}

TEST(Script, EmptyBracesAreAStructureWithoutMembers) {
    EXPECT_EQ(execute("s={};T[0]={{},};"), "s = {}\nT = [0: [0: {}]]\n");
}

TEST(Script, ALaterMemberMayHaveAnEmptyName) {
    EXPECT_EQ(execute("s={a=1;=2;};"), "s = {a: 1, : 2}\n");
}

TEST(Script, ElementsOfAListEndWithACommaOrASemicolon) {
    EXPECT_EQ(execute("a={{x=1;};};b={{x=1;},};c={{x=1;},{x=2;};{x=3;}};"),
              "a = [0: {x: 1}]\nb = [0: {x: 1}]\nc = [0: {x: 1}, 1: {x: 2}, 2: {x: 3}]\n");
}

TEST(Script, AnElementMayBeAnyValue) {
    EXPECT_EQ(execute("a={1,two,\"\"three\"\",{x=4;},{{y=5;},},};b={\"single\";};"),
              "a = [0: 1, 1: \"two\", 2: \"three\", 3: {x: 4}, 4: [0: {y: 5}]]\n"
              "b = [0: \"single\"]\n");
}

TEST(Script, AnElementMayBeAnAssignmentWithoutAName) {
    EXPECT_EQ(execute("a={=\"\"v\"\";=2;={x=3;};};"), "a = [0: \"v\", 1: 2, 2: {x: 3}]\n");
}

TEST(Script, AnElementMayBeARangeWhichIsAListOfItsOwn) {
    EXPECT_EQ(execute("a={[0-1]=1,2,;[0--1]=;[0-0]={{x=3;},};};"),
              "a = [0: [0: 1, 1: 2], 1: [], 2: [0: {x: 3}]]\n");
}

}  // namespace
TEST(StructuresInScripts, MayBeginWithMembersWithoutANameOfWhichTheLastCounts) {
    EXPECT_EQ(execute(R"(T[0]={{=""1"";P=""Holm"";W=""9"";};};)"),
              "T = [0: [0: {: \"1\", P: \"Holm\", W: \"9\"}]]\n");
    EXPECT_EQ(execute(R"(T={=""1"";=""2"";P=""Holm"";=""3"";};)"), "T = {: \"3\", P: \"Holm\"}\n");
    EXPECT_EQ(execute(R"(T={P=""Holm"";=""3"";=4;};)"), "T = {P: \"Holm\", : 4}\n");
}

TEST(StructuresInScripts, HaveAMemberWithAName) {
    EXPECT_EQ(execute(R"(T={=""1"";=""2"";};)"), "T = [0: \"1\", 1: \"2\"]\n");
}

}  // namespace cobalt
