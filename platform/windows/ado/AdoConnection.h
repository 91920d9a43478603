#pragma once

#include "platform/Database.h"
#include "platform/windows/ado/ado.h"
#include "platform/windows/com/ComPointer.h"

namespace intake {

/// A connection of ADO, with the recordset that its one query will fill.
class AdoConnection final : public Connection {
public:
    AdoConnection(ComPointer<IAdoConnection> connection, ComPointer<IAdoRecordset> recordset)
        : connection_(std::move(connection)), recordset_(std::move(recordset)) {}

    void open(const std::string& connectionString) override;
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;
    std::vector<Error> errors() override;

private:
    const ComPointer<IAdoConnection> connection_;
    ComPointer<IAdoRecordset> recordset_;
};

}  // namespace intake
