#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "formats/source/EndMark.h"
#include "formats/workbook/Workbook.h"
#include "platform/Database.h"
#include "platform/linux/base/RegularFile.h"
#include "platform/linux/workbook/sheet_module.h"

namespace intake {

/// A connection to a workbook (.xlsx, .xlsm), whose sheets are tables: `[Sheet1$]` is a sheet's
/// used rectangle, `[Sheet1$B2:D20]` any other, and the workbook's names are tables too. Queries
/// are run by an SQLite connection in memory that sees nothing but these tables. One worker thread.
class WorkbookConnection final : public Connection {
public:
    /// `endMark` outlives this object.
    explicit WorkbookConnection(const EndMark& endMark) : endMark_(endMark) {}

    /// Takes `Data Source` and, of the `Extended Properties`, `HDR`: with NO the first row is a
    /// record like all others, and the columns are F1, F2…
    void open(const std::string& connectionString) override;

    /// Runs a SELECT.
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;

    std::vector<Error> errors() override { return errors_; }

private:
    struct CloseDatabase {
        void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
    };

    /// Runs a step; what it throws is kept for errors(), with the workbook's path in it.
    template <class Step>
    auto reported(Step step);

    void openWorkbook();
    void openDatabase();
    void registerTables(const std::string& query);
    sqlite3_stmt* prepare(const std::string& query);
    [[noreturn]] void throwUnreadable(const std::string& reason) const;
    [[noreturn]] void throwRefused(const std::string& query);

    const EndMark& endMark_;
    std::string path_;
    bool header_ = true;
    std::vector<Error> errors_;
    QueryRights rights_;
    std::unique_ptr<RegularFile> file_;
    std::unique_ptr<Workbook> workbook_;
    std::vector<std::unique_ptr<SheetModule>> modules_;
    std::unique_ptr<sqlite3, CloseDatabase> database_;  // goes first
};

}  // namespace intake
