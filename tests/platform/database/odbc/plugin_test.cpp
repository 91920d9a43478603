// Database servers from end to end: the workbench, the plugin, a driver and a server.

#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/support/eventually.h"
#include "tests/workbench/cli/Workbench.h"

namespace intake {

namespace {

class DatabasePlugin : public Workbench {
protected:
    ChildResult query(const std::string& connectionString, const std::string& text,
                      const std::vector<std::string>& more = {"--out", "script"}) const {
        return load({"queryMode=SQL", "connStr=" + connectionString, "query=" + text,
                     "mode=DataTable", "table=T", "key=id"},
                    more);
    }

    static std::string connectionString(const DatabaseServer& server) {
        return "Provider=MSDASQL;" + server.connectionString() + ";Pwd=s3cret";
    }

    /// A server that listens may still have to get ready.
    void waitFor(const DatabaseServer& server) const {
        EXPECT_TRUE(eventually(
            [&] { return query(connectionString(server), "SELECT 1 AS id").status == 0; }));
    }
};

TEST_F(DatabasePlugin, ValuesOfPostgresAreWritten) {
    const auto server = startPostgres();
    waitFor(*server);

    const ChildResult result =
        query(connectionString(*server),
              "SELECT 'a' AS id, -7::bigint AS whole, 1234567.5::numeric AS part, true AS yes, "
              "false AS no, 'Ünï 🏆' AS text, NULL AS none, now() AS time, 'x'::bytea AS bytes");

    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "T[a]={{id=\"a\";whole=\"-7\";part=\"1.23457e+06\";yes=\"1\";no=\"0\";"
              "text=\"Ünï 🏆\";none=\"\";time=\"\";bytes=\"\";};};");
}

TEST_F(DatabasePlugin, ValuesOfMariaDbAreWritten) {
    const auto server = startMariaDb();
    waitFor(*server);

    const ChildResult result =
        query(connectionString(*server),
              "SELECT 'a' AS id, -7 AS whole, 1234567.5 AS part, true AS yes, false AS no, "
              "'Ünï 🏆' AS text, NULL AS none, now() AS time, x'00' AS bytes");

    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "T[a]={{id=\"a\";whole=\"-7\";part=\"1.23457e+06\";yes=\"1\";no=\"0\";"
              "text=\"Ünï 🏆\";none=\"\";time=\"\";bytes=\"\";};};");
}

TEST_F(DatabasePlugin, FailuresSayWhatTheServerSays) {
    const auto server = startPostgres();
    waitFor(*server);
    const std::string refused = server->connectionString() + ";Pwd=guess";

    const ChildResult unknown = query(connectionString(*server), "SELECT * FROM nothing");
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.out, "READER_NUM_RECORDS=0;");
    EXPECT_EQ(unknown.err,
              "Failed to open recordset with query SELECT * FROM nothing\n"
              "Error number: 0x80004005    ERROR: relation \"nothing\" does not exist;\n"
              "Error while executing the query\n");

    const ChildResult stranger = query(refused, "SELECT 1");
    EXPECT_EQ(stranger.status, 1);
    EXPECT_TRUE(stranger.err.starts_with("Failed to open the connection string " + refused +
                                         "Error number: 0x80004005    "))
        << stranger.err;
    EXPECT_TRUE(
        stranger.err.ends_with("FATAL:  password authentication failed for user \"designer\"\n"))
        << stranger.err;
}

TEST_F(DatabasePlugin, AProcessThatEndsWithinAQueryEndsAtOnce) {
    const auto server = startPostgres();
    waitFor(*server);

    const ChildResult result = query(connectionString(*server), "SELECT pg_sleep(1000)",
                                     {"--out", "script", "--timeout", "1"});

    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out, "");
}

}  // namespace

}  // namespace intake
