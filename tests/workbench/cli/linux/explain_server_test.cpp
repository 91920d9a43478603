// What `explain` and `explore` say of database servers.

#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/support/eventually.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

struct Kind {
    const char* name;
    std::unique_ptr<intake::DatabaseServer> (*start)();
    const char* database;
    const char* noTable;
    const char* slow;
    const char* writingFunction;
};

/// For the names of tests.
void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

constexpr Kind postgres{"Postgres",
                        intake::startPostgres,
                        "postgres",
                        "ERROR: relation \"teem\" does not exist. The database has: team.",
                        "SELECT pg_sleep(30) AS code",
                        "CREATE FUNCTION empty_it() RETURNS integer AS 'DELETE FROM team; "
                        "SELECT 1' LANGUAGE sql"};
constexpr Kind mariaDb{"MariaDb",
                       intake::startMariaDb,
                       "league",
                       "Table 'league.teem' doesn't exist. The database has: team.",
                       "SELECT sleep(30) AS code",
                       "CREATE FUNCTION empty_it() RETURNS INT BEGIN DELETE FROM team; "
                       "RETURN 1; END"};

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    const auto at = text.find(what);
    return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

class ExplainedServer : public ExplainTest, public testing::WithParamInterface<Kind> {
protected:
    ExplainedServer() : server_(GetParam().start()) {
        for (const char* const statement :
             {"CREATE TABLE team (code VARCHAR(3), name VARCHAR(20), points INTEGER)",
              "INSERT INTO team VALUES ('HOL', 'Hollinbeck', 68), ('ESK', 'Eskerfold', 51)"})
            execute(statement);
    }

    std::string connection() const { return server_->connectionString() + ";Pwd=s3cret"; }

    Settings of(const std::string& query, const std::string& connection) const {
        return {"queryMode=SQL",  "connStr=" + connection,
                "query=" + query, "mode=DataTable",
                "table=T",        "key=code"};
    }

    /// What is told; the password stands nowhere in it.
    Explained told(const std::string& query, const std::string& connection,
                   const std::vector<std::string>& more = {}) const {
        const ChildResult result = explain(of(query, connection), joined({"--out", "json"}, more));
        EXPECT_EQ((result.out + result.err).find("s3cret"), std::string::npos) << result.out;
        return Explained(result.out);
    }

    /// Of PostgreSQL.
    bool hasNoOtherConnection() const {
        constexpr int empty = 5;
        const std::string others =
            "SELECT pid AS code FROM pg_stat_activity "
            "WHERE backend_type = 'client backend' AND pid <> pg_backend_pid()";
        return load(of(others, connection()), {"--fail-on-empty"}).status == empty;
    }

    std::unique_ptr<intake::DatabaseServer> server_;

private:
    /// By the plugin, which runs what it is given. A server that listens may have to get ready.
    void execute(const std::string& statement) const {
        const auto isReady = [&] {
            return load(of("SELECT 1 AS code", connection()), {"--out", "script"}).status == 0;
        };
        EXPECT_TRUE(intake::eventually(isReady));
        load(of(statement, connection()), {"--out", "script"});
    }
};

using ExplainedPostgres = ExplainedServer;

INSTANTIATE_TEST_SUITE_P(, ExplainedPostgres, testing::Values(postgres),
                         [](const auto& kind) { return std::string(kind.param.name); });

INSTANTIATE_TEST_SUITE_P(, ExplainedServer, testing::Values(postgres, mariaDb),
                         [](const auto& kind) { return std::string(kind.param.name); });

}  // namespace

TEST_P(ExplainedServer, ThatIsWellIsLookedInto) {
    const ChildResult result = explain(of("SELECT * FROM team", connection()));
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_NE(result.out.find("✓ selection SELECT * FROM team: 2 rows, 3 columns\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(result.out.find("s3cret"), std::string::npos);
}

TEST_P(ExplainedServer, ThatRefusesToWriteIsPreviewedAndCounted) {
    const ChildResult result =
        run({"explore", "--set", "queryMode=SQL", "--set", "connStr=" + connection(), "--at",
             "team", "--count-rows", "--out", "json"});
    EXPECT_NE(result.out.find("\"records\": 2"), std::string::npos) << result.out << result.err;
    EXPECT_NE(result.out.find("Hollinbeck"), std::string::npos) << result.out;
}

TEST_P(ExplainedServer, WithoutTheTableIsToldAndMended) {
    const Explained explained = told("SELECT * FROM teem", connection());
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "selection");
    EXPECT_EQ(explained.failed()->place, "teem");
    EXPECT_EQ(explained.failed()->cause, GetParam().noTable);
    EXPECT_EQ(explained.failed()->set, Settings{"query=SELECT * FROM team"});
    EXPECT_EQ(explained.failed()->records, 2U);
}

TEST_P(ExplainedServer, WithoutTheColumnIsToldAndMended) {
    const Explained explained = told("SELECT t.nane AS code FROM team t", connection());
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->place, "nane");
    EXPECT_EQ(explained.failed()->set, Settings{"query=SELECT t.name AS code FROM team t"});
    EXPECT_EQ(explained.failed()->records, 2U);
}

TEST_P(ExplainedServer, ThatRefusesThePasswordIsAskedOnce) {
    const Explained explained =
        told("SELECT * FROM team", server_->connectionString() + ";Pwd=s3cretly");
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "fetched");
    EXPECT_EQ(explained.failed()->seen, "the login is refused");
    EXPECT_NE(explained.failed()->next.find("not sent again"), std::string::npos);
}

TEST_P(ExplainedServer, WithoutTheDatabaseIsToldWithThoseThatAreThere) {
    const std::string database = GetParam().database;
    const std::string wrong =
        replaced(connection(), "Database=" + database, "Database=" + database + "s");
    const Explained explained = told("SELECT * FROM team", wrong);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "fetched");
    EXPECT_EQ(explained.failed()->seen, "no such database");
    EXPECT_NE(explained.failed()->cause.find(" The user may see: "), std::string::npos)
        << explained.failed()->cause;
    ASSERT_EQ(explained.failed()->set.size(), 1U);
    EXPECT_EQ(explained.failed()->set.front(),
              "connStr=" + replaced(connection(), "s3cret", "••••"));
    EXPECT_EQ(explained.failed()->records, 2U);
}

TEST_P(ExplainedServer, ThatIsDownIsTold) {
    server_->kill();
    const Explained explained = told("SELECT * FROM team", connection());
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "address");
    EXPECT_NE(explained.failed()->next.find("that the database runs"), std::string::npos);
}

TEST_P(ExplainedServer, ThatTakesTooLongIsToldInTime) {
    const auto start = std::chrono::steady_clock::now();
    const ChildResult result = explain(of(GetParam().slow, connection()), {"--timeout", "4"});
    EXPECT_EQ(result.status, 3) << result.out << result.err;
    EXPECT_NE(result.out.find("It gave no answer in time."), std::string::npos) << result.out;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(25));
}

TEST_P(ExplainedServer, WritesNothingByAQueryThatLooksHarmless) {
    load(of(GetParam().writingFunction, connection()), {"--out", "script"});
    const Explained explained = told("SELECT empty_it() AS code", connection());
    EXPECT_TRUE(explained.isOk);
    EXPECT_EQ(explained.stages[4].state, "warning");
    EXPECT_NE(explained.stages[4].cause.find("so it was not run"), std::string::npos);
    EXPECT_EQ(told("SELECT * FROM team", connection()).records, 2U);
}

TEST_P(ExplainedServer, WritesNothingByWhatItsOwnSyntaxHides) {
    for (const char* const query :
         {"SELECT $$'$$; COMMIT; BEGIN READ WRITE; DELETE FROM team; COMMIT; SELECT 1 -- '",
          "SELECT E'\\'' a; COMMIT; BEGIN READ WRITE; DELETE FROM team; COMMIT; SELECT 1 a --'",
          "/* /* */ ' */ SELECT 1; COMMIT; BEGIN READ WRITE; DELETE FROM team; COMMIT; SELECT 1 "
          "--'",
          "/*! DELETE FROM team */", "SELECT 1 # it's\n; DELETE FROM team -- '"}) {
        const Explained explained = told(query, connection());
        EXPECT_EQ(explained.stages[4].state == "ok", false) << query;
    }
    EXPECT_EQ(told("SELECT * FROM team", connection()).records, 2U);
}

TEST_P(ExplainedServer, WritesNothingByAQueryThatIsLate) {
    // MariaDB refuses such a query before it begins.
    const bool isPostgres = GetParam().name == std::string("Postgres");
    load(of(GetParam().writingFunction, connection()), {"--out", "script"});
    const std::string query =
        std::string("SELECT ") + (isPostgres ? "pg_sleep(6)" : "sleep(6)") + ", empty_it() AS code";
    const ChildResult late = explain(of(query, connection()), {"--timeout", "4"});
    EXPECT_EQ(late.status, isPostgres ? 3 : 0) << late.out << late.err;
    // A server may go on with what it was asked before it notices that nobody is there any more.
    EXPECT_TRUE(!isPostgres || intake::eventually([this] { return hasNoOtherConnection(); }));
    EXPECT_EQ(told("SELECT * FROM team", connection()).records, 2U);
}

// Only PostgreSQL can be asked for that from outside of the plugin.
TEST_P(ExplainedPostgres, HoldsThePluginsOwnLoadToReading) {
    load(of("CREATE SEQUENCE counter", connection()), {"--out", "script"});
    const Explained explained = told(
        "SELECT CASE WHEN current_setting('transaction_read_only') = 'on' THEN 0 "
        "ELSE nextval('counter') END AS code",
        connection());
    EXPECT_EQ(explained.records, 1U);
    EXPECT_EQ(told("SELECT 1 AS code FROM counter WHERE is_called", connection()).records, 0U);
}

TEST_P(ExplainedServer, IsExplored) {
    const ChildResult result =
        run({"explore", "--set", "queryMode=SQL", "--set", "connStr=" + connection()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("--set 'query=SELECT * FROM team'"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("--set 'query=SELECT points FROM team'"), std::string::npos);
    EXPECT_EQ((result.out + result.err).find("s3cret"), std::string::npos);
}

TEST_P(ExplainedServer, HasItsTablesCountedAndPreviewed) {
    const ChildResult result =
        run({"explore", "--set", "queryMode=SQL", "--set", "connStr=" + connection(), "--at",
             "team", "--from", "1", "--limit", "1", "--out", "json"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.out.find("\"preview\""), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("\"rows\": []"), std::string::npos) << result.out;
    const ChildResult counted =
        run({"explore", "--set", "queryMode=SQL", "--set", "connStr=" + connection(), "--at",
             "team", "--count-rows", "--out", "json", "--limit", "1"});
    EXPECT_NE(counted.out.find("\"records\": 2"), std::string::npos) << counted.out;
}
