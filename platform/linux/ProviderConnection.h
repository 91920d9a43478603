#pragma once

#include "platform/Database.h"
#include "platform/linux/base/OpenConnection.h"

namespace intake {

/// A connection by the provider that its connection string names: Microsoft.ACE.OLEDB for a
/// workbook, SQLite's, or one that has an ODBC driver.
class ProviderConnection final : public Connection {
public:
    /// The mark is borrowed and outlives this object.
    explicit ProviderConnection(const EndMark& endMark) : endMark_(endMark) {}

    void open(const std::string& connectionString) override;
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;
    std::vector<Error> errors() override { return errors_; }
    std::vector<std::string> warnings() override;

private:
    template <class Step>
    void keepErrors(Step step);

    const EndMark& endMark_;
    std::vector<Error> errors_;  // of the last step
    std::unique_ptr<OpenConnection> connection_;
};

/// SQLite databases, workbooks, and databases by way of the drivers that the user has. The
/// connection string decides when a connection is opened.
class LinuxDatabases final : public DatabaseServices {
public:
    std::unique_ptr<Connection> createConnection(const EndMark& endMark) override;
};

}  // namespace intake
