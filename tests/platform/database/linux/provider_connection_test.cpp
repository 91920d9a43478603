// Which provider a connection string leads to.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/PlatformError.h"
#include "platform/linux/ProviderConnection.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

class ProviderConnection : public testing::Test {
protected:
    /// Why the connection does not open; empty when it does.
    std::string failureOf(const std::string& connectionString) {
        connection_ = databases_.createConnection(endMark_);
        try {
            connection_->open(connectionString);
            return "";
        } catch (const PlatformError& failure) {
            return failure.description();
        }
    }

    TempWorkingDirectory directory_;
    LinuxDatabases databases_;
    EndMark endMark_;
    std::unique_ptr<Connection> connection_;
};

TEST_F(ProviderConnection, OfADriverOpensAndRunsQueries) {
    directory_.write("league.db", "");
    ASSERT_EQ(failureOf("Driver=SQLite3;Database=league.db"), "");
    const auto records = connection_->openRecordset("SELECT 7 AS points");
    FieldValue value;
    ASSERT_EQ(records->fieldCount(), 1U);
    EXPECT_EQ(records->fieldName(0), "points");
    EXPECT_FALSE(records->atEnd());
    EXPECT_TRUE(connection_->errors().empty());
}

TEST_F(ProviderConnection, OfADatabaseFileOpensIt) {
    directory_.write("new league.db", "");
    EXPECT_EQ(failureOf("Provider=SQLite;Data Source=new league.db"), "");
    EXPECT_FALSE(connection_->openRecordset("SELECT 1")->atEnd());
}

TEST_F(ProviderConnection, OfAFileThatIsMissingFailsAndCreatesNone) {
    EXPECT_NE(failureOf("Provider=SQLite;Data Source=typo.db"), "");
    EXPECT_FALSE(connection_->errors().empty());
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(ProviderConnection, ThatIsUnknownFailsWithoutErrorsOfItsOwn) {
    const std::string failure = failureOf("Provider=Oracle;Password=s3cret");
    EXPECT_TRUE(failure.starts_with("There is no provider \"Oracle\" on this system.")) << failure;
    EXPECT_TRUE(connection_->errors().empty());
}

TEST_F(ProviderConnection, OfAWorkbookIsToldByExcelAnywhereInItsExtendedProperties) {
    for (const std::string extended : {"Excel 12.0 Xml;HDR=YES", "HDR=YES;Excel 12.0 Xml"}) {
        EXPECT_EQ(failureOf("Provider=Microsoft.ACE.OLEDB.12.0;Data Source=a.xlsx;"
                            "Extended Properties=\"" +
                            extended + "\""),
                  "The workbook \"a.xlsx\" cannot be read: No such file or directory");
    }
}

TEST_F(ProviderConnection, OfTheWorkbookProviderWithoutAWorkbookIsUnknown) {
    for (const std::string extended : {"", ";Extended Properties=\"text;HDR=Yes\""}) {
        const std::string failure =
            failureOf("Provider=Microsoft.ACE.OLEDB.12.0;Data Source=a.accdb" + extended);
        EXPECT_TRUE(failure.starts_with(
            "There is no provider \"Microsoft.ACE.OLEDB.12.0\" on this system."))
            << failure;
    }
}

TEST_F(ProviderConnection, OfAMalformedStringFails) {
    EXPECT_EQ(failureOf("Provider=SQLite;nonsense"),
              "The connection string is wrong at character 17: there is no \"=\" before the next "
              "\";\"");
}

}  // namespace
}  // namespace intake
