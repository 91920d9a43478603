// Real servers, by the drivers that Debian has for them.

#include <array>
#include <cmath>
#include <map>
#include <sstream>
#include <thread>

#include "platform/linux/odbc/OdbcRecordset.h"
#include "tests/platform/database/DatabaseTest.h"
#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/platform/database/odbc/DecimalComma.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

constexpr uint32_t GIVEN_UP = 0x80004004;

/// A kind of server, and what is its own.
struct ServerKind {
    const char* name;
    std::unique_ptr<DatabaseServer> (*start)();
    const char* sleep;     // a query that takes a thousand seconds
    const char* sleeping;  // how many of those are running
    const char* values;
    const char* valuesRead;
    uint32_t wrongPassword;
    const char* wrongPasswordText;
    uint32_t unknownTable;
    const char* unknownTableText;

    friend void PrintTo(const ServerKind& kind, std::ostream* out) { *out << kind.name; }
};

const ServerKind POSTGRES{
    "Postgres",
    startPostgres,
    "SELECT pg_sleep(1000)",
    "SELECT count(*) FROM pg_stat_activity WHERE query = 'SELECT pg_sleep(1000)' AND state = "
    "'active'",
    "SELECT (-32768)::smallint, (-2147483648)::int, (-9223372036854775808)::bigint, "
    "4294967295::oid, "
    "1.5::real, -1e300::float8, 12345.678::numeric(10,3), true, false, 'Ünï 🏆', ''::varchar(20), "
    "'a'::char(3), DATE '2026-11-20', TIME '20:15', now(), '\\x00ff'::bytea, "
    "'{\"goals\": 2}'::json, ARRAY[1,2]",
    "I2 -32768|I4 -2147483648|I8 -9223372036854775808|UI4 4294967295|R4 1.5|R8 -1e+300|"
    "DECIMAL 12345.7|BSTR 1|BSTR 0|BSTR Ünï 🏆|BSTR |BSTR a  |DATE|DATE|DATE|BYTES|"
    "BSTR {\"goals\": 2}|BSTR {1,2}|\n",
    0x80004005,
    "FATAL:  password authentication failed for user \"designer\"",
    0x80004005,
    "ERROR: relation \"städte\" does not exist;\nError while executing the query",
};

const ServerKind MARIADB{
    "MariaDb",
    startMariaDb,
    "SELECT sleep(1000)",
    "SELECT count(*) FROM information_schema.processlist WHERE info = 'SELECT sleep(1000)'",
    "SELECT * FROM (SELECT CAST(-9223372036854775807 AS SIGNED) a, 18446744073709551615 b, 7 c, "
    "1.5e0 d, 12345.678 e, b'1' f, 'Ünï 🏆' g, '' h, DATE '2026-11-20' i, TIME '20:15' j, now() k, "
    "x'00ff' l) v",
    "I8 -9223372036854775807|UI8 18446744073709551615|I4 7|R8 1.5|DECIMAL 12345.7|BYTES|"
    "BSTR Ünï 🏆|BSTR |DATE|DATE|DATE|BYTES|\n",
    0x80040E4D,
    "Access denied for user 'designer'@'localhost' (using password: YES)",
    0x80040E37,
    "Table 'league.städte' doesn't exist",
};

std::string kindName(const testing::TestParamInfo<ServerKind>& kind) {
    return kind.param.name;
}

/// Starting a server takes longer than most tests, so that they share one of each kind.
DatabaseServer& sharedServer(const ServerKind& kind) {
    static std::map<std::string, std::unique_ptr<DatabaseServer>> servers;
    std::unique_ptr<DatabaseServer>& server = servers[kind.name];
    if (server == nullptr) {
        server = kind.start();
    }
    return *server;
}

class Server : public DatabaseTest, public testing::WithParamInterface<ServerKind> {
protected:
    void connect() { connectTo(sharedServer(kind_)); }

    /// A server that listens may still have to get ready.
    void connectTo(const DatabaseServer& server) {
        EXPECT_TRUE(eventually([&] { return connects(server); }));
    }

    static std::string connectionString(const DatabaseServer& server) {
        return server.connectionString() + ";Pwd=s3cret";
    }

    const ServerKind& kind_ = GetParam();

private:
    bool connects(const DatabaseServer& server) {
        try {
            open(connectionString(server));
            return true;
        } catch (const PlatformError&) {
            return false;
        }
    }
};

/// A query for texts of these lengths in characters, and what it gives.
struct LongTexts {
    explicit LongTexts(const std::vector<size_t>& lengths) {
        for (size_t record = 0; record < lengths.size(); ++record) {
            const size_t length = lengths[record];
            query += query.empty() ? "SELECT " : " UNION ALL SELECT ";
            query += "repeat('ä🏆x', " + std::to_string(length) + "), " + std::to_string(record);
            records += "BSTR ";
            for (size_t i = 0; i < length; ++i) {
                records += "ä🏆x";
            }
            records += "|I4 " + std::to_string(record) + "|\n";
        }
    }
    std::string query;
    std::string records;
};

TEST_P(Server, ValuesKeepTheirTypes) {
    connect();
    EXPECT_EQ(recordsOfQuery(kind_.values), kind_.valuesRead);
    EXPECT_EQ(recordsOfQuery("SELECT NULL, CAST(NULL AS CHAR(3)), CAST(NULL AS DECIMAL(5,2)), 7"),
              "NULL|NULL|NULL|I4 7|\n");
}

TEST_P(Server, TextsOfAnyLengthAreWhole) {
    connect();
    const LongTexts texts({0, 1, 17, 18, 19, 1, 500, 1170, 1171, 1'500'000, 2, 20'000, 3});

    EXPECT_EQ(recordsOfQuery(texts.query), texts.records);
}

TEST_P(Server, ManyRecordsWithLongTextsAmongThemComeInOrder) {
    connect();
    std::vector<size_t> lengths;
    for (size_t record = 0; record < 200; ++record) {
        lengths.push_back(record % 63 == 0 ? 3'000 : record % 50 == 49 ? 300 : record % 20);
    }
    const LongTexts texts(lengths);

    EXPECT_EQ(recordsOfQuery(texts.query), texts.records);
}

TEST_P(Server, AFetchMayTakeExactlyWhatThereIs) {
    connect();
    for (const size_t count : {1, 63, 64, 65, 128}) {
        const LongTexts texts(std::vector<size_t>(count, 1));
        EXPECT_EQ(recordsOfQuery(texts.query), texts.records) << count;
    }
    EXPECT_EQ(recordsOfQuery("SELECT 7 FROM (SELECT 1) AS nothing WHERE 1 = 0"), "");
}

TEST_P(Server, QueriesAndNamesMayBeOfAnyLanguage) {
    connect();
    run("CREATE TABLE größen (größe VARCHAR(20))");
    run("INSERT INTO größen VALUES ('größer'), ('日本'), ('🏆')");

    EXPECT_EQ(namesOfQuery("SELECT größe, größe AS \"p.90 日本\" FROM größen"), "größe|p.90 日本|");
    EXPECT_EQ(recordsOfQuery("SELECT größe FROM größen WHERE größe IN ('日本', '🏆')"),
              "BSTR 日本|\nBSTR 🏆|\n");
}

TEST_P(Server, TheHostsLocaleChangesNothing) {
    const DecimalComma locale;
    connect();

    EXPECT_EQ(recordsOfQuery(kind_.values), kind_.valuesRead);
    EXPECT_EQ(namesOfQuery("SELECT 1 AS größe"), "größe|");
    errorOf([&] { connection_->openRecordset("SELECT * FROM städte"); });
    EXPECT_NE(errorLines().find(kind_.unknownTableText), std::string::npos) << errorLines();
}

TEST_P(Server, AnUnknownTableIsNamed) {
    connect();
    const PlatformError error =
        errorOf([&] { connection_->openRecordset("SELECT * FROM städte"); });

    EXPECT_EQ(error.code(), kind_.unknownTable);
    EXPECT_TRUE(error.description().ends_with(kind_.unknownTableText)) << error.description();
    EXPECT_EQ(connection_->errors().size(), 1U);
}

TEST_P(Server, AWrongPasswordIsRefusedAndNotShown) {
    connect();
    const PlatformError error =
        errorOf([&] { open(sharedServer(kind_).connectionString() + ";Pwd=gue55"); });

    EXPECT_EQ(error.code(), kind_.wrongPassword);
    EXPECT_TRUE(error.description().ends_with(kind_.wrongPasswordText)) << error.description();
    EXPECT_EQ(errorLines().find("gue55"), std::string::npos);
}

TEST_P(Server, AQueryThatNeverEndsIsGivenUp) {
    connect();
    std::thread host([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        endMark_.set();
    });

    EXPECT_EQ(errorOf([&] { connection_->openRecordset(kind_.sleep); }).code(), GIVEN_UP);
    host.join();
}

TEST_P(Server, AQueryWithoutARecordInTimeIsCancelled) {
    connect();
    OdbcSession session;
    ASSERT_TRUE(session.connect(connectionString(sharedServer(kind_)), std::chrono::seconds(15)));

    const PlatformError error = errorOf([&] {
        OdbcRecordset(session, describeDriver(session.connection().get()), kind_.sleep, endMark_,
                      std::chrono::milliseconds(200));
    });

    EXPECT_EQ(error.code(), 0x80040E31);
    EXPECT_EQ(error.description(), "The query was cancelled: no record came within 0 seconds.");
    EXPECT_EQ(recordsOfQuery(kind_.sleeping), "I8 0|\n");
}

TEST_P(Server, AServerThatDiesWithinAQueryFailsIt) {
    const auto server = kind_.start();
    connectTo(*server);
    std::thread accident([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        server->kill();
    });

    EXPECT_EQ(errorOf([&] { connection_->openRecordset(kind_.sleep); }).code(), 0x80004005);
    accident.join();
    EXPECT_EQ(errorOf([&] { open(connectionString(*server)); }).code(), 0x80004005);
}

INSTANTIATE_TEST_SUITE_P(EachKind, Server, testing::Values(POSTGRES, MARIADB), kindName);

class Postgres : public Server {};

TEST_P(Postgres, IsReadValueByValueByADriverThatIsNotKnown) {
    connect();
    const LongTexts texts({0, 63, 64, 65, 1, 500'000, 2});
    OdbcSession session;
    ASSERT_TRUE(session.connect(connectionString(sharedServer(kind_)), std::chrono::seconds(15)));
    const auto read = [&](const std::string& query) {
        OdbcRecordset records(session, OdbcDriver{}, query, endMark_);
        return recordsOf(records);
    };

    EXPECT_EQ(read(kind_.values), kind_.valuesRead);
    EXPECT_EQ(read(texts.query), texts.records);
    EXPECT_EQ(read("SELECT NULL, 7 WHERE true"), "NULL|I4 7|\n");
}

TEST_P(Postgres, ThatDiesWithinAFetchFailsIt) {
    const auto server = kind_.start();
    connectTo(*server);
    open(connectionString(*server) + ";UseDeclareFetch=1;Fetch=10");
    const auto records = connection_->openRecordset("SELECT generate_series(1, 1000)");
    server->kill();

    EXPECT_EQ(errorOf([&] { recordsOf(*records); }).code(), 0x80004005);
}

TEST_P(Postgres, SaysBooleansAsBooleansWhereTheConnectionAsksForIt) {
    connect();
    open(connectionString(sharedServer(kind_)) + ";BoolsAsChar=0");

    EXPECT_EQ(recordsOfQuery("SELECT true, false, NULL::boolean"), "BOOL 1|BOOL 0|NULL|\n");
}

TEST_P(Postgres, ByItsNarrowDriverGivesTextsOfAnyLanguage) {
    connect();
    std::string narrow = connectionString(sharedServer(kind_));
    narrow.replace(narrow.find("Unicode"), 7, "ANSI");
    open(narrow);

    EXPECT_EQ(recordsOfQuery("SELECT 'Ünï 🏆', 7, 1.5::float8, 18446744073709551615::numeric"),
              "BSTR Ünï 🏆|I4 7|R8 1.5|DECIMAL 1.84467e+19|\n");
    EXPECT_EQ(namesOfQuery("SELECT 1 AS größe"), "größe|");
}

TEST_P(Postgres, SaysAllOfALongError) {
    connect();
    std::string text;
    for (int i = 0; i < 50; ++i) {
        text += "größer ";
    }

    errorOf(
        [&] { connection_->openRecordset("DO $$ BEGIN RAISE EXCEPTION '" + text + "'; END $$"); });

    EXPECT_EQ(errorLines(), "80004005 ERROR: " + text + ";\nError while executing the query\n");
}

TEST_P(Postgres, RefusesCopyWhichItsDriverWouldWaitForForEver) {
    connect();
    for (const char* query : {"copy (select 1) to stdout",
                              "\n-- a\n/* b */ COPY(SELECT 1) TO STDOUT", "Copy\tt FROM stdin"}) {
        const PlatformError error = errorOf([&] { connection_->openRecordset(query); });
        EXPECT_EQ(error.description(), "COPY does not return records.") << query;
    }
    EXPECT_EQ(recordsOfQuery("SELECT 1 AS copy"), "I4 1|\n");
    EXPECT_EQ(recordsOfQuery("/* copy */ WITH copy AS (SELECT 2) SELECT * FROM copy -- copy"),
              "I4 2|\n");
}

TEST_P(Postgres, GivesMoneyAsANumberAndOtherTypesOfItsOwnAsTexts) {
    connect();
    EXPECT_EQ(recordsOfQuery("SELECT '-1234.5'::money, '20:15+01'::timetz, "
                             "'5e7e9c0e-1c5f-4f0c-8a1a-0f0c9f5d3c11'::uuid, '1 day'::interval, "
                             "jsonb_exists('{\"a\": 1}', 'a'), 1501.0849999999998::float8"),
              "R8 -1234.5|BSTR 20:15:00+01|BSTR 5E7E9C0E-1C5F-4F0C-8A1A-0F0C9F5D3C11|BSTR 1 day|"
              "BSTR 1|R8 1501.08|\n");
}

TEST_P(Postgres, NumbersThatAreNoPlainDecimalsAreReadByItsDriver) {
    connect();
    const std::string values =
        "SELECT CASE n % 7 WHEN 0 THEN 'NaN' WHEN 1 THEN '1e400' WHEN 2 THEN '-1e-400' "
        "WHEN 3 THEN NULL ELSE '-12.50' END::numeric, "
        "CASE n % 5 WHEN 0 THEN 'Infinity' WHEN 1 THEN '-Infinity' WHEN 2 THEN '1e-7' "
        "ELSE '-0' END::float8, (-1234.5 * n)::numeric::money FROM generate_series(0, 199) n";
    std::string read;
    for (int n = 0; n < 200; ++n) {
        const std::array<const char*, 4> odd{"DECIMAL nan", "DECIMAL inf", "DECIMAL -0", "NULL"};
        const std::array<const char*, 3> floats{"R8 inf", "R8 -inf", "R8 1e-07"};
        read += n % 7 < 4 ? odd[static_cast<size_t>(n % 7)] : "DECIMAL -12.5";
        read += std::string("|") + (n % 5 < 3 ? floats[static_cast<size_t>(n % 5)] : "R8 -0");
        std::ostringstream money;
        money << "|R8 " << -1234.5 * n + 0.0 << "|\n";
        read += money.str();
    }
    EXPECT_EQ(recordsOfQuery(values), read);
}

TEST_P(Postgres, ANumberMayBeAskedForMoreThanOnce) {
    connect();
    const auto records =
        connection_->openRecordset("SELECT '7.5'::money, 'NaN'::float8 FROM generate_series(1, 3)");
    for (; !records->atEnd(); records->moveNext()) {
        for (int time = 0; time < 2; ++time) {
            FieldValue money, none;
            ASSERT_TRUE(records->value(0, money) && records->value(1, none));
            EXPECT_EQ(money.number, 7.5);
            EXPECT_TRUE(std::isnan(none.number));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Alone, Postgres, testing::Values(POSTGRES), kindName);

class MariaDb : public Server {};

TEST_P(MariaDb, ColumnsHaveTheTypesThatTheyDeclare) {
    connect();
    run("CREATE TABLE t (a TINYINT, b TINYINT UNSIGNED, c SMALLINT, d INT UNSIGNED, e BIGINT, "
        "f BOOLEAN, g BIT, h FLOAT, i DECIMAL(10,3), j LONGTEXT, k BLOB, l YEAR, m ENUM('x','y'))");
    run("INSERT INTO t VALUES (-128, 255, -32768, 4294967295, -1, TRUE, 0, 1.5, 12345.678, 'long', "
        "x'00', 2026, 'y'), (1, 1, 1, 1, 1, FALSE, 1, 1, 1, '', '', 1999, 'x')");
    run("INSERT INTO t VALUES (" + std::string("NULL, NULL, NULL, NULL, NULL, NULL, NULL, ") +
        "NULL, NULL, NULL, NULL, NULL, NULL)");

    EXPECT_EQ(recordsOfQuery("SELECT * FROM t"),
              "I1 -128|UI1 255|I2 -32768|UI4 4294967295|I8 -1|I1 1|BOOL 0|R4 1.5|DECIMAL 12345.7|"
              "BSTR long|BYTES|UI2 2026|BSTR y|\n"
              "I1 1|UI1 1|I2 1|UI4 1|I8 1|I1 0|BOOL 1|R4 1|DECIMAL 1|BSTR |BYTES|UI2 1999|BSTR x|\n"
              "NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|BYTES|NULL|NULL|\n");
}

INSTANTIATE_TEST_SUITE_P(Alone, MariaDb, testing::Values(MARIADB), kindName);

}  // namespace

}  // namespace intake
