#pragma once

#include <memory>
#include <string>
#include <vector>

#include "formats/connection/connection_string.h"
#include "formats/source/EndMark.h"
#include "formats/workbook/Workbook.h"
#include "platform/linux/base/OpenConnection.h"
#include "platform/linux/base/RegularFile.h"
#include "platform/linux/sqlite/SqliteError.h"
#include "platform/linux/sqlite/SqliteSession.h"
#include "platform/linux/sqlite/SqliteStatement.h"
#include "platform/linux/workbook/sheet_module.h"

namespace intake {

/// A connection to a workbook (.xlsx, .xlsm), whose sheets are tables: `[Sheet1$]` is a sheet's
/// used rectangle, `[Sheet1$B2:D20]` any other, and the workbook's names are tables too. Queries
/// are run by an SQLite connection in memory that sees nothing but these tables. One worker thread.
class WorkbookConnection final : public OpenConnection {
public:
    /// Takes `Data Source` and, of the `Extended Properties`, `HDR`: with NO the first row is a
    /// record like all others, and the columns are F1, F2… `endMark` outlives this object. Throws
    /// ConnectionFailure.
    WorkbookConnection(const ConnectionString& connection, const EndMark& endMark);

    /// Runs a SELECT.
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;

private:
    std::unique_ptr<SqliteSession> openDatabase();
    void registerTables(const std::string& query);
    SqliteStatement prepare(const std::string& query);
    [[noreturn]] void throwRefused(const std::string& query, const SqliteError& error);

    const EndMark& endMark_;
    const std::string path_;
    const bool header_;
    QueryRights rights_;
    const std::unique_ptr<RegularFile> file_;
    const std::unique_ptr<Workbook> workbook_;
    std::vector<std::unique_ptr<SheetModule>> modules_;
    const std::unique_ptr<SqliteSession> database_;  // goes first
};

}  // namespace intake
