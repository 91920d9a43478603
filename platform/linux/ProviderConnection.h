#pragma once

#include "formats/source/EndMark.h"
#include "platform/Database.h"

namespace intake {

/// A connection by the provider that its connection string names: Microsoft.ACE.OLEDB for a
/// workbook, or one that has an ODBC driver.
class ProviderConnection final : public Connection {
public:
    /// The mark is borrowed and outlives this object.
    explicit ProviderConnection(const EndMark& endMark) : endMark_(endMark) {}

    void open(const std::string& connectionString) override;
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;
    std::vector<Error> errors() override;

private:
    const EndMark& endMark_;
    std::unique_ptr<Connection> provider_;  // none before a provider is found
};

}  // namespace intake
