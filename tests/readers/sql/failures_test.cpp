// What a load that fails says.

#include "tests/readers/sql/SQLHandlerFixture.h"

#include "pipeline/error_reports.h"

namespace intake {
namespace {

constexpr TargetMode MODES[] = {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY,
                                SHARED_MEMORY};

class SqlFailures : public SQLHandlerFixture {
protected:
    SqlFailures() {
        databases_.names = {"code", "team"};
        databases_.rows = {{"HOL", "Holm"}, {"ESK", "Eskdale"}};
    }

    /// The error text that a failing call leaves behind, and the report of what it throws.
    std::string errorOfFailing(const std::string& call, int occurrence) {
        databases_.failAt(call, occurrence);
        try {
            read();
        } catch (const PlatformError& failure) {
            return error_ + comErrorReport(failure);
        }
        return "";
    }
};

TEST_F(SqlFailures, AConnectionThatDoesNotOpenIsNamedWithWhatItReported) {
    databases_.failAt("open");
    databases_.errors = {{0x80004005, "No such host"}, {0x12, "Giving up"}};
    EXPECT_EQ(error(DATA_TABLE),
              "Failed to open the connection string DSN=league"
              "Error number: 0x80004005    No such host\r\r\n"
              "Error number: 0x12    Giving up\r\r\n");
}

TEST_F(SqlFailures, AConnectionThatDoesNotOpenAndReportsNothingHasTheFailuresDescription) {
    databases_.failAt("open");
    EXPECT_EQ(error(DATA_TABLE),
              "Failed to open the connection string DSN=league"
              "ERROR in Connection Open = The server went away.");
}

TEST_F(SqlFailures, AQueryThatDoesNotRunIsNamedWithWhatTheConnectionReported) {
    databases_.failAt("openRecordset");
    databases_.errors = {{0x80040E37, "no such table: teams"}};
    EXPECT_EQ(error(DATA_TABLE),
              "Failed to open recordset with query SELECT * FROM teams\n"
              "Error number: 0x80040e37    no such table: teams\r\r\n");
}

TEST_F(SqlFailures, AQueryThatDoesNotRunWithoutAReportHasTheFailuresDescription) {
    databases_.failAt("openRecordset");
    EXPECT_EQ(error(DATA_TABLE),
              "Failed to open recordset with query SELECT * FROM teams\n"
              "ERROR in Connection Open = The server went away.");
}

TEST_F(SqlFailures, AQueryThatDoesNotRunShowsNoConnectionString) {
    request_.connStr = "DSN=league;PWD=s3cret";
    databases_.failAt("openRecordset");
    EXPECT_EQ(error(DATA_TABLE).find("s3cret"), std::string::npos);
}

TEST_F(SqlFailures, TheErrorIsAppendedToWhatIsThere) {
    databases_.failAt("open");
    error_ = "Before: ";
    EXPECT_FALSE(read());
    EXPECT_EQ(error_,
              "Before: Failed to open the connection string DSN=league"
              "ERROR in Connection Open = The server went away.");
}

TEST_F(SqlFailures, AKeyThatIsNoFieldIsNamed) {
    request_.key = "points";
    EXPECT_EQ(error(DATA_TABLE), "ERROR: Key: \"points\" not found.");
    EXPECT_EQ(error(DATA_FIELD_ARRAY), "ERROR: Key: \"points\" not found.");
    request_.table.clear();
    EXPECT_EQ(error(DATA_STRUCTURE), "ERROR: Key: \"points\" not found.");
}

TEST_F(SqlFailures, AnEmptyKeyIsNoField) {
    request_.key.clear();
    EXPECT_EQ(error(DATA_TABLE), "ERROR: Key: \"\" not found.");
}

TEST_F(SqlFailures, AFieldThatCannotBeTakenIsNamedByItsIndex) {
    databases_.rows[1][1] = FakeValue::missing();
    for (const TargetMode mode : {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, SHARED_MEMORY}) {
        EXPECT_EQ(error(mode), "ERROR: Cannot retrieve field #1") << mode;
    }
    request_.key = "team";
    EXPECT_EQ(error(DATA_FIELD_ARRAY), "ERROR: Cannot retrieve field #1");
}

TEST_F(SqlFailures, OfAnyOtherCallAreLeftToTheWorker) {
    struct {
        const char* call;
        int occurrence;
    } const failing[] = {{"createConnection", 1}, {"atEnd", 1},      {"atEnd", 2},
                         {"moveFirst", 1},        {"fieldCount", 1}, {"fieldName", 2},
                         {"findField", 1},        {"value", 1},      {"value", 5},
                         {"moveNext", 1},         {"moveNext", 2}};
    for (const auto& [call, occurrence] : failing) {
        EXPECT_EQ(errorOfFailing(call, occurrence), FakeDatabases::failureReport())
            << call << " " << occurrence;
    }
}

TEST_F(SqlFailures, OfTheReportAreLeftToTheWorkerToo) {
    class Unreportable final : public Connection {
    public:
        void open(const std::string&) override { throw FakeDatabases::failure(); }
        std::unique_ptr<Recordset> openRecordset(const std::string&) override { return nullptr; }
        std::vector<Error> errors() override { throw FakeDatabases::failure(); }
    };
    struct Databases final : DatabaseServices {
        std::unique_ptr<Connection> createConnection(const EndMark&) override {
            return std::make_unique<Unreportable>();
        }
    } databases;
    SQLHandler handler(logger_, databases, endMark_);
    EXPECT_THROW(handler.Read(request_, script_, error_), PlatformError);
    EXPECT_EQ(error_, "Failed to open the connection string DSN=league");
}

TEST_F(SqlFailures, AtAnyCallReleaseWhatWasOpened) {
    for (const TargetMode mode : MODES) {
        for (const char* call : {"open", "openRecordset", "moveFirst", "value", "moveNext"}) {
            FakeDatabases databases;
            databases.names = databases_.names;
            databases.rows = databases_.rows;
            databases.failAt(call);
            request_.targetMode = mode;
            try {
                EXPECT_FALSE(
                    SQLHandler(logger_, databases, endMark_).Read(request_, script_, error_));
            } catch (const PlatformError&) {
            }
            const bool hadRecordset = std::string(call).starts_with("open") == false;
            const std::string end =
                hadRecordset ? "release recordset\nrelease connection\n" : "release connection\n";
            EXPECT_TRUE(databases.calls().ends_with(end)) << databases.calls();
        }
    }
}

}  // namespace
}  // namespace intake
