// Real servers are reached by the words of ADO, whatever the password.

#include <gtest/gtest.h>

#include "formats/connection/connection_string.h"
#include "platform/PlatformError.h"
#include "platform/linux/ProviderConnection.h"
#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/support/eventually.h"

namespace intake {
namespace {

std::string inQuotes(const std::string& value) {
    std::string quoted = "\"";
    for (const char c : value) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + "\"";
}

/// A server that is reached by a provider's name.
class ServerByProvider {
public:
    ServerByProvider(const char* provider, std::unique_ptr<DatabaseServer> server)
        : provider_(provider),
          server_(std::move(server)),
          odbc_(ConnectionString::parse(server_->connectionString())) {}

    std::unique_ptr<Connection> connect(const std::string& password) {
        auto connection = databases_.createConnection(endMark_);
        connection->open(
            "Provider=" + provider_ + ";Data Source=" + odbc_.value("Server") +
            ";Port=" + odbc_.value("Port") + ";Initial Catalog=" + odbc_.value("Database") +
            ";User ID=designer;Persist Security Info=False;Password=" + inQuotes(password));
        return connection;
    }

    /// A server that has just been started does not let everybody in at once.
    void waitUntilReady() {
        EXPECT_TRUE(eventually([this] {
            try {
                connect(password_);
                return true;
            } catch (const PlatformError&) {
                return false;
            }
        }));
    }

    /// The statement is one with `?` for the password.
    void setPassword(std::string statement, const std::string& password) {
        constexpr uint32_t NO_RECORDS = 0x800A0E78;
        statement.replace(statement.find('?'), 1, "'" + password + "'");
        try {
            connect(password_)->openRecordset(statement);
            ADD_FAILURE() << "A statement without records is an error";
        } catch (const PlatformError& failure) {
            EXPECT_EQ(failure.code(), NO_RECORDS) << failure.description();
        }
        password_ = password;
    }

private:
    std::string provider_;
    std::unique_ptr<DatabaseServer> server_;
    ConnectionString odbc_;
    LinuxDatabases databases_;
    EndMark endMark_;
    std::string password_ = "s3cret";
};

/// Passwords that would end too early, or be decoded, if they were not written with care.
constexpr const char* AWKWARD[] = {"a;b", "a}b",   "{ab}",    "a;b}c", "a}",        "}};UID=root",
                                   "a=b", "\"q\"", "a%3Bb+c", "p w",   "\xC3\xA9;", "=;"};

void expectAnyPassword(ServerByProvider server, const std::string& statement) {
    server.waitUntilReady();
    for (const char* password : AWKWARD) {
        server.setPassword(statement, password);
        try {
            const auto connection = server.connect(password);
            EXPECT_FALSE(connection->openRecordset("SELECT 'in'")->atEnd());
        } catch (const PlatformError& failure) {
            FAIL() << password << ": " << failure.description();
        }
        EXPECT_THROW(server.connect(std::string(password) + "x"), PlatformError) << password;
    }
}

TEST(ProviderServer, OfPostgreSqlTakesAnyPassword) {
    expectAnyPassword({"PostgreSQL OLE DB Provider", startPostgres()},
                      "ALTER USER designer PASSWORD ?");
}

TEST(ProviderServer, OfMariaDbTakesAnyPassword) {
    expectAnyPassword({"MariaDB", startMariaDb()}, "SET PASSWORD = PASSWORD(?)");
}

}  // namespace
}  // namespace intake
