// What the system's own ADO makes of connection strings and queries.

#include <cstdlib>

#include "platform/PlatformError.h"
#include "tests/platform/windows/ado/AdoTest.h"

namespace intake {
namespace {

constexpr uint32_t NO_SUCH_CLASS_NAME = 0x800401F3;
constexpr uint32_t PROVIDER_NOT_FOUND = 0x800A0E7A;

class AdoConnections : public AdoTest {
protected:
    std::unique_ptr<Connection> connection() { return AdoDatabases().createConnection(endMark_); }

    /// The code that opening fails with.
    uint32_t failure(const std::string& connectionString) {
        try {
            connection()->open(connectionString);
        } catch (const PlatformError& error) {
            EXPECT_NE(error.meaning(), "");
            return error.code();
        }
        ADD_FAILURE() << connectionString << " has been opened";
        return 0;
    }

    EndMark endMark_;
};

TEST_F(AdoConnections, FailWhereThereIsNoSuchProvider) {
    const uint32_t code = failure("Provider=Nobody.Has.This;Data Source=x");
    EXPECT_TRUE(code == NO_SUCH_CLASS_NAME || code == PROVIDER_NOT_FOUND) << code;
}

TEST_F(AdoConnections, FailWhereThereIsNoSuchDataSource) {
    EXPECT_NE(failure("Provider=MSDASQL;Data Source=nobody_has_this"), 0U);
}

TEST_F(AdoConnections, ThatFailAreReportedWithTheirConnectionString) {
    request_.connStr = "Provider=Nobody.Has.This;Data Source=x";
    AdoDatabases databases;
    EXPECT_FALSE(read(databases));
    const std::string report =
        "Failed to open the connection string Provider=Nobody.Has.This;Data Source=xERROR in "
        "Connection Open = ";
    EXPECT_EQ(error_.substr(0, report.size()), report);
}

/// Through MSDASQL to a data source that the caller of this program has set up; Wine passes it to
/// the ODBC of its own host.
class AdoDataSource : public AdoConnections {
protected:
    void SetUp() override {
        if (std::getenv("INTAKE_ODBC_DATA_SOURCE") == nullptr) {
            GTEST_SKIP() << "INTAKE_ODBC_DATA_SOURCE does not name an ODBC data source";
        }
        connection_ = connection();
        connection_->open(std::string("Provider=MSDASQL;Data Source=") +
                          std::getenv("INTAKE_ODBC_DATA_SOURCE"));
    }

    std::unique_ptr<Connection> connection_;
};

TEST_F(AdoDataSource, TellsTheFieldsOfAQuery) {
    const auto recordset = connection_->openRecordset("SELECT 1 AS code, 'x' AS name");
    ASSERT_EQ(recordset->fieldCount(), 2U);
    EXPECT_EQ(recordset->fieldName(0), "code");
    EXPECT_EQ(recordset->fieldName(1), "name");
    EXPECT_EQ(recordset->findField("NAME"), 1U);
    EXPECT_FALSE(recordset->findField("points"));
}

TEST_F(AdoDataSource, FailsAQueryThatMakesNoSense) {
    EXPECT_THROW(connection_->openRecordset("SELECT FROM WHERE"), PlatformError);
}

}  // namespace
}  // namespace intake
