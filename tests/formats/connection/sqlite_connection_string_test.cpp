// Which connection strings mean a file of SQLite's, and what they say of it.

#include "formats/connection/sqlite_connection_string.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

/// `path|milliseconds|ignored keys`, "none" for another database, or why there is none.
std::string sqlite(const std::string& text) {
    try {
        const auto settings = sqliteSettings(ConnectionString::parse(text));
        if (!settings) {
            return "none";
        }
        std::string all = settings->path + "|" + std::to_string(settings->lockTime.count());
        for (const std::string& key : settings->ignored) {
            all += "|" + key;
        }
        return all;
    } catch (const ConnectionStringError& failure) {
        return failure.what();
    }
}

TEST(SqliteConnectionString, NamesTheProviderOrTheDriver) {
    for (const std::string name :
         {"Provider=SQLite", "Provider=SQLite3", "provider=sqlite OLE DB", "Driver=SQLite3",
          "Driver=SQLite", "driver={sqlite3}", "Provider=MSDASQL.1;Driver=SQLite3",
          "Provider=;Driver=SQLite3"}) {
        EXPECT_EQ(sqlite(name + ";Database=a.db"), "a.db|15000") << name;
    }
}

TEST(SqliteConnectionString, LeavesAllOthersToOdbc) {
    for (const char* const text :
         {"DSN=league", "DSN=league;Driver=SQLite3;Database=a.db", "FileDSN=a;Driver=SQLite3",
          "Driver=/usr/lib/libsqlite3odbc.so;Database=a.db", "Driver=SQLite3 ODBC Driver",
          "Provider=PostgreSQL;Driver=SQLite3", "Provider=SQ", "Database=a.db", ""}) {
        EXPECT_EQ(sqlite(text), "none") << text;
    }
}

TEST(SqliteConnectionString, NamesTheFileInTheWordsOfAdoOrOdbc) {
    for (const std::string key : {"Data Source", "Database", "DBQ", "dbq", "Initial Catalog"}) {
        EXPECT_EQ(sqlite("Provider=SQLite;" + key + "=data/a b.db"), "data/a b.db|15000");
    }
    EXPECT_EQ(sqlite("Driver=SQLite3;Database={a;b}}c.db}"), "a;b}c.db|15000");
    EXPECT_EQ(sqlite("Provider=SQLite;Data Source=\"a.db;LoadExt=x.so\""),
              "a.db;LoadExt=x.so|15000");
}

TEST(SqliteConnectionString, MeansTheFirstFileOfSeveral) {
    EXPECT_EQ(sqlite("Provider=SQLite;Data Source=a.db;Initial Catalog=main"), "a.db|15000");
    EXPECT_EQ(sqlite("Provider=SQLite;Data Source=;Database=b.db"), "b.db|15000");
}

TEST(SqliteConnectionString, MayStandInThePropertiesForOdbc) {
    EXPECT_EQ(sqlite("Provider=MSDASQL;Extended Properties=\"Driver=SQLite3;Database=a.db\";UID=x"),
              "a.db|15000|UID");
    EXPECT_EQ(sqlite("Provider=MSDASQL;Extended Properties=\"DSN=league\""), "none");
}

TEST(SqliteConnectionString, NeedsAFile) {
    for (const char* const text : {"Provider=SQLite", "Provider=SQLite;Data Source=",
                                   "Provider=SQLite;Server=a.db", "Driver=SQLite3"}) {
        EXPECT_EQ(sqlite(text), "The connection string names no \"Data Source\"");
    }
}

TEST(SqliteConnectionString, SaysHowLongALockIsWaitedFor) {
    EXPECT_EQ(sqlite("Driver=SQLite3;DBQ=a;Timeout=0"), "a|0");
    EXPECT_EQ(sqlite("Driver=SQLite3;DBQ=a;timeout=4294967295"), "a|4294967295");
    for (const std::string wrong : {"-1", "1.5", "4294967296", "soon"}) {
        EXPECT_EQ(sqlite("Driver=SQLite3;DBQ=a;Timeout=" + wrong),
                  "\"Timeout\" is no number of milliseconds: " + wrong);
    }
}

TEST(SqliteConnectionString, KeepsWhatSqliteDoesNotKnow) {
    EXPECT_EQ(sqlite("Provider=SQLite;Persist Security Info=False;OLE DB Services=-4;Data Source=a;"
                     "NoCreat=Yes;PWD=s3cret"),
              "a|15000|NoCreat|PWD");
}

}  // namespace
}  // namespace intake
