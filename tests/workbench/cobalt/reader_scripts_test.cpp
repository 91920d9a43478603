// One script of every form that the readers write.

#include <gtest/gtest.h>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(JsonScript, ADataTableHasOneRecordForEachKey) {
    EXPECT_EQ(execute(R"(T[k1]={{id=""k1"";n=1.5;},};T[k2]={{id=""k2"";ok=1;},};)"),
              "T = [k1: [0: {id: \"k1\", n: 1.5}], k2: [0: {id: \"k2\", ok: 1}]]\n");
}

TEST(JsonScript, ADataArrayOfObjects) {
    EXPECT_EQ(execute(R"(T[0]={{a=1;},};T[1]={{b=""x"";},};; READER_NUM_RECORDS=2;)"),
              "T = [0: [0: {a: 1}], 1: [0: {b: \"x\"}]]\nREADER_NUM_RECORDS = 2\n");
}

TEST(JsonScript, ADataArrayOfValues) {
    EXPECT_EQ(execute(R"(T[0]={a=1;};T[1]={b=""x"";};; READER_NUM_RECORDS=2;)"),
              "T = [0: {a: 1}, 1: {b: \"x\"}]\nREADER_NUM_RECORDS = 2\n");
    EXPECT_EQ(execute(R"(T[0]={=""x"";};T[1]={=2;};; READER_NUM_RECORDS=2;)"),
              "T = [0: [0: \"x\"], 1: [0: 2]]\nREADER_NUM_RECORDS = 2\n");
}

TEST(JsonScript, ADataArrayOfArrays) {
    EXPECT_EQ(execute(R"(T[0]=""a"",2,;T[1]=;T[2]={[0-1]={{x=1;},=2;};};; READER_NUM_RECORDS=3;)"),
              "T = [0: [0: \"a\", 1: 2], 1: \"\", 2: [0: [0: {x: 1}, 1: 2]]]\n"
              "READER_NUM_RECORDS = 3\n");
}

TEST(JsonScript, NestedObjectsAndArrays) {
    EXPECT_EQ(execute(R"(n={flat[0-3]=""a"",2,1,;empty[0--1]=;objects[0-1]={{a=1;},{a=2;},};)"
                      R"(mixed[0-2]={{a=1;},=""v"";[0-1]=1,2,;};o={p={q=0;};};};)"),
              "n = {flat: [0: \"a\", 1: 2, 2: 1], empty: [], objects: [0: {a: 1}, 1: {a: 2}], "
              "mixed: [0: {a: 1}, 1: \"v\", 2: [0: 1, 1: 2]], o: {p: {q: 0}}}\n");
}

TEST(JsonScript, ADataStructureForEachKey) {
    EXPECT_EQ(execute(R"(k1={a=1;};k2={b=""x"";};;P_READER_NUM_RECORDS=2;)"),
              "k1 = {a: 1}\nk2 = {b: \"x\"}\nP_READER_NUM_RECORDS = 2\n");
}

TEST(JsonScript, AFieldArray) {
    EXPECT_EQ(execute(R"(T[0-2]=""x"","""",""1.50""; READER_NUM_RECORDS=3;)"),
              "T = [0: \"x\", 1: \"\", 2: \"1.50\"]\nREADER_NUM_RECORDS = 3\n");
}

TEST(TableScript, ADataTableWithARecordCount) {
    EXPECT_EQ(execute(R"(T[k1]={{a=""1"";b=""2"";};};T[k2]={{a=""3"";b=""4"";};};)"
                      R"(P_READER_NUM_RECORDS=2;)"),
              "T = [k1: [0: {a: \"1\", b: \"2\"}], k2: [0: {a: \"3\", b: \"4\"}]]\n"
              "P_READER_NUM_RECORDS = 2\n");
}

TEST(HtmlScript, ADataTableAndADataArray) {
    EXPECT_EQ(execute(R"(T[k1]={{a=""1"";b=""2"";};};T[k2]={{a=""3"";b="""";};};)"),
              "T = [k1: [0: {a: \"1\", b: \"2\"}], k2: [0: {a: \"3\", b: \"\"}]]\n");
    EXPECT_EQ(execute(R"(T[0]={{a=""1"";};};T[1]={{a=""2"";};};READER_NUM_RECORDS=2;)"),
              "T = [0: [0: {a: \"1\"}], 1: [0: {a: \"2\"}]]\nREADER_NUM_RECORDS = 2\n");
}

TEST(HtmlScript, ADataStructureEndsWithItsOwnLineEnd) {
    EXPECT_EQ(execute("k1={a=\"\"1\"\";};\r\r\nk2={a=\"\"2\"\";};\r\r\n"),
              "k1 = {a: \"1\"}\nk2 = {a: \"2\"}\n");
}

TEST(XmlScript, FieldsAreFramedByOneQuote) {
    EXPECT_EQ(execute(R"(T[0]={{p:price="1.50";#text="a "b"";e="";};};READER_NUM_RECORDS=1;)"),
              "T = [0: [0: {p:price: \"1.50\", #text: \"a \"b\"\", e: \"\"}]]\n"
              "READER_NUM_RECORDS = 1\n");
}

TEST(XmlScript, AFieldMayHoldMarkup) {
    EXPECT_EQ(execute(R"(T[0]={{a="<a id="1">x; y</a>";};};)"),
              "T = [0: [0: {a: \"<a id=\"1\">x; y</a>\"}]]\n");
}

TEST(XmlScript, APayloadFieldIsUnquoted) {
    EXPECT_EQ(execute("S={name=Red Lions, Ltd.;points=12;none=;sub={x=a b;};};"),
              "S = {name: \"Red Lions, Ltd.\", points: 12, none: \"\", sub: {x: \"a b\"}}\n");
    EXPECT_EQ(execute("T[0]={{name=Red Lions, Ltd.;};};"),
              "T = [0: [0: {name: \"Red Lions, Ltd.\"}]]\n");
}

TEST(SqlScript, ADataTableAndAFieldArray) {
    EXPECT_EQ(execute(R"(T[7]={{id="7";name="O'Neill";gone="";};};)"),
              "T = [7: [0: {id: \"7\", name: \"O'Neill\", gone: \"\"}]]\n");
    EXPECT_EQ(execute(R"(T[0-1]=""a"",""b"";READER_NUM_RECORDS=2;)"),
              "T = [0: \"a\", 1: \"b\"]\nREADER_NUM_RECORDS = 2\n");
}

TEST(FallbackScript, SetsTheCountToZero) {
    EXPECT_EQ(execute("P_READER_NUM_RECORDS=0;"), "P_READER_NUM_RECORDS = 0\n");
}

}  // namespace
}  // namespace cobalt
