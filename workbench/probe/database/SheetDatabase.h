#pragma once

#include "formats/source/EndMark.h"
#include "formats/workbook/SheetTable.h"
#include "formats/workbook/Workbook.h"
#include "workbench/probe/database/SqliteDatabase.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// A workbook whose sheets can be queried: those that a query names are copied into memory.
class SheetDatabase final : public SqliteDatabase {
public:
    /// `hasHeader`: the first row of a sheet names its columns.
    SheetDatabase(const std::string& path, bool hasHeader, Deadline end);

    std::string words() const override { return "a workbook"; }

    /// The sheets, as a query calls them: with a dollar sign behind the name.
    std::vector<TableEntry> tables() override;
    std::vector<ColumnEntry> columns(const TableEntry& table) override;
    std::unique_ptr<Rows> query(const std::string& query) override;
    char quote() const override { return '['; }

private:
    void copy(const std::string& name, const intake::SheetTable& table) const;

    const intake::EndMark never_;
    const bool hasHeader_;
    const std::string bytes_;
    const intake::TextSource file_;
    intake::Workbook workbook_;
    std::vector<std::string> copied_;
};

}  // namespace probe
