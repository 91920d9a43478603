// Queries that succeed, in every mode.

#include "tests/sql/SqlWorkbench.h"

namespace intake {
namespace {

struct SqlLoad : SqlWorkbench {
    /// The script of a load that must succeed.
    std::string script(const std::string& sql, const std::vector<std::string>& settings) {
        const ChildResult result = query(sql, settings);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }
};

TEST_F(SqlLoad, ATableByKey) {
    EXPECT_EQ(script("SELECT * FROM team WHERE points > 0", {"mode=DataTable", "key=CODE"}),
              R"(T[HOL]={{code="HOL";name="Hollinbeck";points="68";average="2.51852";};};)"
              R"(T[ESK]={{code="ESK";name="Eskerfold";points="51";average="";};};)");
}

TEST_F(SqlLoad, AnArrayByRowNumber) {
    EXPECT_EQ(script("SELECT name, points FROM team ORDER BY points",
                     {"mode=DataArray", "fromRow=1", "numRows=1", "varsPrefix=L_"}),
              R"(T[0]={{name="Eskerfold";points="51";};};L_READER_NUM_RECORDS=2;)");
}

TEST_F(SqlLoad, StructuresByKey) {
    EXPECT_EQ(script("SELECT code, points FROM team WHERE code = 'KEL'",
                     {"mode=DataStructure", "key=code", "table="}),
              R"(KEL={code="KEL";points="-1";};)");
}

TEST_F(SqlLoad, AColumnAsAFieldArray) {
    EXPECT_EQ(script("SELECT name FROM team", {"mode=Data Field Array", "key=name"}),
              R"(T[0-2]=""Hollinbeck"",""Eskerfold"",""Kelder "Town""";READER_NUM_RECORDS=3;)");
}

TEST_F(SqlLoad, ATextInSharedMemory) {
    EXPECT_EQ(script("SELECT code, points FROM team",
                     {"mode=Shared Memory", "delimiter= ", "rowsDelimiter=, ", "shmvar=TEAMS"}),
              "HOL 68, ESK 51, KEL -1");
}

TEST_F(SqlLoad, AResultWithoutRows) {
    EXPECT_EQ(script("SELECT * FROM team WHERE points > 100", {"mode=DataArray"}),
              "READER_NUM_RECORDS=0;");
}

TEST_F(SqlLoad, TheSameFileInTheWordsOfOdbc) {
    EXPECT_EQ(script("SELECT code FROM team WHERE points = 68",
                     {"mode=DataArray", "connStr=Driver=SQLite3;Database=league.db"}),
              R"(T[0]={{code="HOL";};};READER_NUM_RECORDS=1;)");
}

TEST_F(SqlLoad, AFileWithBlanksInQuotes) {
    makeDatabase(folder / "cup final.db", "CREATE TABLE t (a TEXT); INSERT INTO t VALUES ('x');");
    EXPECT_EQ(script("SELECT a FROM t",
                     {"mode=DataArray", "connStr=Provider=SQLite;Data Source='cup final.db'"}),
              R"(T[0]={{a="x";};};READER_NUM_RECORDS=1;)");
}

}  // namespace
}  // namespace intake
