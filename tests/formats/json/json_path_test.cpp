#include "formats/json/json_path.h"

#include <gtest/gtest.h>

#include <string>

namespace intake {
namespace {

/// One line per step: how it searches, its name and what its brackets ask for.
std::string steps(std::string_view path) {
    std::string text;
    for (const PathStep& step : parsePath(path)) {
        text += (step.directChildren ? "child <" : "any depth <") + step.name + ">";
        if (step.kind == PathStep::Kind::INDEX) {
            text += " index " + std::to_string(step.index);
        } else if (step.kind == PathStep::Kind::FILTER) {
            text += " filter <" + step.field + "> is <" + step.value + ">";
        }
        text += "\n";
    }
    return text;
}

TEST(JsonPath, AnEmptyTextHasNoSteps) {
    EXPECT_EQ(steps(""), "");
}

TEST(JsonPath, ANameIsAStepToChildren) {
    EXPECT_EQ(steps("items"), "child <items>\n");
}

TEST(JsonPath, SlashesSeparateStepsWhichKeepTheirOrder) {
    EXPECT_EQ(steps("c/a/b"), "child <c>\nchild <a>\nchild <b>\n");
}

TEST(JsonPath, AStarIsANameLikeAnyOther) {
    EXPECT_EQ(steps("items/*"), "child <items>\nchild <*>\n");
}

TEST(JsonPath, ADoubleSlashMakesTheNextStepSearchAtAnyDepth) {
    EXPECT_EQ(steps("a//b/c"), "child <a>\nany depth <b>\nchild <c>\n");
}

TEST(JsonPath, ALeadingSlashMakesTheFirstStepSearchAtAnyDepth) {
    EXPECT_EQ(steps("/b"), "any depth <b>\n");
}

TEST(JsonPath, MoreSlashesMeanNoMoreThanTwo) {
    EXPECT_EQ(steps("///a////b"), "any depth <a>\nany depth <b>\n");
}

TEST(JsonPath, TrailingSlashesAddNothing) {
    EXPECT_EQ(steps("a/"), "child <a>\n");
    EXPECT_EQ(steps("a//"), "child <a>\n");
    EXPECT_EQ(steps("a///"), "child <a>\n");
}

TEST(JsonPath, APathOfSlashesAndBlanksHasNoSteps) {
    EXPECT_EQ(steps("/"), "");
    EXPECT_EQ(steps("//"), "");
    EXPECT_EQ(steps(" "), "");
    EXPECT_EQ(steps(" / \t/ "), "");
}

TEST(JsonPath, AllSixWhiteSpaceCharactersAreTrimmedAroundASegment) {
    EXPECT_EQ(steps(" \f\n\r\t\va \f\n\r\t\v/\v\t\r\n\f b\v\t\r\n\f "), "child <a>\nchild <b>\n");
}

TEST(JsonPath, WhiteSpaceInsideANameIsPartOfIt) {
    EXPECT_EQ(steps("home \t team"), "child <home \t team>\n");
}

TEST(JsonPath, ASegmentOfWhiteSpaceCountsAsEmpty) {
    EXPECT_EQ(steps("a/ \t /b"), "child <a>\nany depth <b>\n");
    EXPECT_EQ(steps(" /b"), "any depth <b>\n");
}

TEST(JsonPath, DigitsInBracketsAreAnIndex) {
    EXPECT_EQ(steps("list[0]/list[42]/list[007]"),
              "child <list> index 0\nchild <list> index 42\nchild <list> index 7\n");
}

TEST(JsonPath, AnIndexBeyondAllIndexesIsTheLargest) {
    EXPECT_EQ(steps("list[2147483647]"), "child <list> index 2147483647\n");
    EXPECT_EQ(steps("list[2147483648]"), "child <list> index 2147483647\n");
    EXPECT_EQ(steps("list[99999999999999999999999999]"), "child <list> index 2147483647\n");
}

TEST(JsonPath, AStarInBracketsIsIgnored) {
    EXPECT_EQ(steps("list[*]"), "child <list>\n");
}

TEST(JsonPath, EmptyBracketsAreIgnored) {
    EXPECT_EQ(steps("list[]"), "child <list>\n");
}

TEST(JsonPath, WordsInBracketsAreIgnored) {
    EXPECT_EQ(steps("list[first]"), "child <list>\n");
    EXPECT_EQ(steps("list[@id]"), "child <list>\n");
}

TEST(JsonPath, OnlyDigitsMakeAnIndex) {
    EXPECT_EQ(steps("list[-1]/list[+1]/list[ 1 ]/list[1.0]/list[0x1]"),
              "child <list>\nchild <list>\nchild <list>\nchild <list>\nchild <list>\n");
}

TEST(JsonPath, AnEqualsSignInBracketsMakesAFilter) {
    EXPECT_EQ(steps("list[id=7]"), "child <list> filter <id> is <7>\n");
}

TEST(JsonPath, WhiteSpaceAroundFieldAndValueIsTrimmedAndTheAtSignAroundTheField) {
    EXPECT_EQ(steps("list[@id = 7]"), "child <list> filter <id> is <7>\n");
    EXPECT_EQ(steps("list[ \f\n\r\t\v@ id @ \f\n\r\t\v=\v\t\r\n\f a b \v\t\r\n\f ]"),
              "child <list> filter <id> is <a b>\n");
    EXPECT_EQ(steps("list[@@a@b@=@c@]"), "child <list> filter <a@b> is <@c@>\n");
}

TEST(JsonPath, AFilterIsSplitAtItsFirstEqualsSign) {
    EXPECT_EQ(steps("list[sum=a=b==c]"), "child <list> filter <sum> is <a=b==c>\n");
}

TEST(JsonPath, AFilterMayHaveAnEmptyFieldOrValue) {
    EXPECT_EQ(steps("list[=7]/list[id=]/list[=]/list[ @ = ]"),
              "child <list> filter <> is <7>\nchild <list> filter <id> is <>\n"
              "child <list> filter <> is <>\nchild <list> filter <> is <>\n");
}

TEST(JsonPath, QuotesInAFilterArePartOfItsValue) {
    EXPECT_EQ(steps("list[id=\"7\"]"), "child <list> filter <id> is <\"7\">\n");
}

TEST(JsonPath, TheNameEndsAtTheFirstBracketAndIsNotTrimmedThere) {
    EXPECT_EQ(steps("list [0]"), "child <list > index 0\n");
}

TEST(JsonPath, BracketsWithoutANameAskForAnEmptyName) {
    EXPECT_EQ(steps("[0]"), "child <> index 0\n");
    EXPECT_EQ(steps("a//[id=7]"), "child <a>\nany depth <> filter <id> is <7>\n");
}

TEST(JsonPath, WhatFollowsTheClosingBracketIsIgnored) {
    EXPECT_EQ(steps("list[0]x/list[0][1]/list[id=7]]"),
              "child <list> index 0\nchild <list> index 0\nchild <list> filter <id> is <7>\n");
}

TEST(JsonPath, AnOpeningBracketInsideBracketsIsPartOfTheContent) {
    EXPECT_EQ(steps("list[[0]]/list[a[b=c[d]"),
              "child <list>\nchild <list> filter <a[b> is <c[d>\n");
}

TEST(JsonPath, ABracketThatIsNotClosedEndsWithItsSegment) {
    EXPECT_EQ(steps("list[3"), "child <list> index 3\n");
    EXPECT_EQ(steps("list[id=7/x"), "child <list> filter <id> is <7>\nchild <x>\n");
    EXPECT_EQ(steps("list["), "child <list>\n");
}

TEST(JsonPath, AClosingBracketAloneIsPartOfTheName) {
    EXPECT_EQ(steps("list]/]"), "child <list]>\nchild <]>\n");
}

TEST(JsonPath, ASlashEndsASegmentInsideBracketsToo) {
    EXPECT_EQ(steps("list[date=1/2]"), "child <list> filter <date> is <1>\nchild <2]>\n");
}

TEST(JsonPath, NamesMayHoldAnyOtherBytes) {
    EXPECT_EQ(steps("Z\xC3\xBCrich/@id/p:price/$.a"),
              "child <Z\xC3\xBCrich>\nchild <@id>\nchild <p:price>\nchild <$.a>\n");
}

}  // namespace
}  // namespace intake
