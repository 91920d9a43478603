#include "workbench/probe/database/QueryText.h"

#include <gtest/gtest.h>

namespace {

using probe::QueryText;

std::vector<std::string> tablesOf(std::string_view query) {
    std::vector<std::string> names;
    for (const probe::QueryWord& word : QueryText(query).tables())
        names.push_back(word.text);
    return names;
}

using Names = std::vector<std::string>;

}  // namespace

TEST(QueryTextTest, KnowsWhereEachWordStands) {
    const QueryText query("SELECT \"a \"\"b\"\"\" FROM [t 1]");
    ASSERT_EQ(query.words().size(), 4U);
    EXPECT_EQ(query.words()[1].text, "a \"b\"");
    EXPECT_EQ(query.words()[1].offset, 7U);
    EXPECT_EQ(query.words()[1].length, 9U);
    EXPECT_TRUE(query.words()[1].isQuoted);
    EXPECT_EQ(query.words()[3].text, "t 1");
    EXPECT_EQ(query.words()[3].offset, 22U);
}

TEST(QueryTextTest, PassesOverCommentsAndValues) {
    const QueryText query("SELECT 'it''s DROP' /* DELETE */ -- INSERT\n, x");
    ASSERT_EQ(query.words().size(), 2U);
    EXPECT_EQ(query.words()[1].text, "x");
    EXPECT_TRUE(query.isReading());
}

TEST(QueryTextTest, EndsWhereAQuoteOrACommentIsNotClosed) {
    EXPECT_EQ(QueryText("SELECT 'a").words().size(), 1U);
    EXPECT_EQ(QueryText("SELECT \"a").words().size(), 2U);
    EXPECT_EQ(QueryText("SELECT /* a").words().size(), 1U);
    EXPECT_EQ(QueryText("SELECT -- a").words().size(), 1U);
}

TEST(QueryTextTest, ReadsOneSelectOrWithOnly) {
    for (const char* const query :
         {"SELECT 1", "  select 1 ; ", "WITH a AS (SELECT 1) SELECT * FROM a", "(SELECT 1)"})
        EXPECT_TRUE(QueryText(query).isReading()) << query;
    for (const char* const query :
         {"DELETE FROM t", "SELECT 1; SELECT 2", "WITH a AS (DELETE FROM t RETURNING x) SELECT 1",
          "SELECT * INTO u FROM t", "SELECT * FROM t FOR UPDATE", "EXEC p", "PRAGMA x", "", ";"})
        EXPECT_FALSE(QueryText(query).isReading()) << query;
}

TEST(QueryTextTest, KnowsWhereDatabasesDisagree) {
    for (const char* const query :
         {"SELECT $$'$$; DELETE FROM t --'", "SELECT E'\\'' a; DELETE FROM t --'",
          "/* /* */ ' */ SELECT 1; DELETE FROM t -- '", "/*! DELETE FROM t */",
          "SELECT 1 /*M! INTO OUTFILE 'x' */", "SELECT 1 # it's\nINTO OUTFILE 'x' -- '",
          "SELECT 1 --1; DELETE FROM t", "SELECT ARRAY['a']; DELETE FROM t --'",
          "SELECT \"a\\\" FROM t", "SELECT `a;b`"})
        EXPECT_FALSE(QueryText(query).isCertain()) << query;
    for (const char* const query : {"SELECT 'a;b', '#1' FROM [Sheet1$] -- x",
                                    "SELECT a$b /* c */ FROM \"t u\"", "SELECT 1 --\n, 2"})
        EXPECT_TRUE(QueryText(query).isCertain()) << query;
}

TEST(QueryTextTest, WhatAColumnIsCalledIsNoStatement) {
    EXPECT_TRUE(QueryText("SELECT count(*) AS call, 'x' AS merge FROM t").isReading());
    EXPECT_FALSE(QueryText("WITH a AS (DELETE FROM t) SELECT 1").isReading());
    EXPECT_FALSE(QueryText("SELECT 1 EXEC p").isReading());
}

TEST(QueryTextTest, IsBlankWithoutAnythingToRun) {
    EXPECT_TRUE(QueryText("").isBlank());
    EXPECT_TRUE(QueryText(" ;; -- SELECT").isBlank());
    EXPECT_FALSE(QueryText("(").isBlank());
    EXPECT_FALSE(QueryText("/*! DELETE FROM t */").isBlank());
}

TEST(QueryTextTest, FindsTheTablesThatAreRead) {
    EXPECT_EQ(tablesOf("SELECT a FROM t"), Names{"t"});
    EXPECT_EQ(tablesOf("SELECT a FROM s.t AS x, \"u v\" WHERE b = c"), (Names{"t", "u v"}));
    EXPECT_EQ(tablesOf("SELECT a FROM t JOIN u ON t.a = u.a LEFT JOIN v USING (a)"),
              (Names{"t", "u", "v"}));
    EXPECT_EQ(tablesOf("SELECT (SELECT max(x) FROM u), b FROM t WHERE c IN (SELECT d FROM v)"),
              (Names{"u", "t", "v"}));
    EXPECT_EQ(tablesOf("SELECT a, b FROM t ORDER BY c, d"), Names{"t"});
    EXPECT_EQ(tablesOf("SELECT 1"), Names{});
}

TEST(QueryTextTest, TablesThatTheQueryDeclaresAreNone) {
    EXPECT_EQ(tablesOf("WITH a AS (SELECT * FROM t) SELECT * FROM a JOIN u"), (Names{"t", "u"}));
}
