// What the user reads when a query fails (the workbench ends it by one line feed); the data store
// is told that there are no records.

#include "tests/sql/SqlWorkbench.h"

namespace intake {
namespace {

struct SqlFailure : SqlWorkbench {
    /// What a load that must fail says.
    std::string error(const std::string& sql, const std::vector<std::string>& settings) {
        const ChildResult result = query(sql, settings);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "READER_NUM_RECORDS=0;");
        return result.err;
    }
};

TEST_F(SqlFailure, OfAMissingFileNamesTheConnectionAndCreatesNothing) {
    EXPECT_EQ(
        error("SELECT * FROM team", {"connStr=Provider=SQLite;Data Source=typo.db"}),
        "Failed to open the connection string Provider=SQLite;Data Source=typo.db"
        "Error number: 0x80004005    The database \"typo.db\" cannot be opened: No such file or "
        "directory\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "typo.db"));
}

TEST_F(SqlFailure, OfAnUnknownProviderNamesThoseThatThereAre) {
    EXPECT_EQ(error("SELECT 1", {"connStr=Provider=Oracle;Data Source=x"}),
              "Failed to open the connection string Provider=Oracle;Data Source=x"
              "ERROR in Connection Open = There is no provider \"Oracle\" on this system. There "
              "are MSDASQL for any ODBC driver, SQLOLEDB, MSOLEDBSQL, SQLNCLI, PostgreSQL, MySQL, "
              "MariaDB, SQLite, and Microsoft.ACE.OLEDB for Excel workbooks\n");
}

TEST_F(SqlFailure, OfAMalformedConnectionStringSaysWhereItIsWrong) {
    EXPECT_EQ(error("SELECT 1", {"connStr=Provider=SQLite;league.db"}),
              "Failed to open the connection string Provider=SQLite;league.db"
              "ERROR in Connection Open = The connection string is wrong at character 17: there "
              "is no \"=\" before the next \";\"\n");
}

TEST_F(SqlFailure, OfAQueryNamesIt) {
    EXPECT_EQ(error("SELECT * FROM teams", {}),
              "Failed to open recordset with query SELECT * FROM teams\n"
              "Error number: 0x80040e37    no such table: teams\n");
}

TEST_F(SqlFailure, OfAKeyThatIsNoColumnNamesIt) {
    EXPECT_EQ(error("SELECT name FROM team", {"mode=DataTable", "key=code"}),
              "ERROR: Key: \"code\" not found.\n");
    EXPECT_EQ(error("SELECT name FROM team", {"mode=Data Field Array", "key=code"}),
              "ERROR: Key: \"code\" not found.\n");
}

}  // namespace
}  // namespace intake
