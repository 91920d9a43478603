#pragma once

#include "formats/connection/connection_string.h"
#include "workbench/probe/database/OdbcHandles.h"

namespace probe {

/// A database behind a driver of ODBC. What it is asked runs in a transaction that is rolled back,
/// and that writes nothing where the database knows such ones.
class OdbcDatabase final : public Database {
public:
    /// `written` is the connection string as the user wrote it, to be mended.
    OdbcDatabase(const intake::ConnectionString& odbc, const std::string& written, Deadline end);

    std::string words() const override;
    std::vector<TableEntry> tables() override;
    std::vector<ColumnEntry> columns(const TableEntry& table) override;
    std::unique_ptr<Rows> query(const std::string& query) override;
    std::string queryForFirst(std::size_t rows, const std::string& columns,
                              const std::string& table) const override;
    bool hasPlainSyntax() const override { return false; }
    bool isHeldToReading() const override { return isHeldToReading_; }
    char quote() const override;

private:
    bool beginReading() const;

    std::unique_ptr<OdbcHandles> handles_;
    const Deadline end_;
    const std::string product_;
    const bool isHeldToReading_;
};

}  // namespace probe
