#include "workbench/probe/database/SheetDatabase.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "formats/text/fold_case.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/foreign_file.h"
#include "formats/workbook/table_names.h"
#include "workbench/probe/database/QueryText.h"
#include "workbench/probe/database/database_file.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::Cell;
using intake::CellKind;
using intake::SheetTable;

[[noreturn]] void fail(const char* reason) {
    throw DatabaseFailure(DatabaseFault::NotReadable,
                          std::string("The workbook cannot be read: ") + reason + ".",
                          "Save or copy it again, as .xlsx without a password.");
}

std::string contentOf(const std::string& path) {
    checkDatabaseFile(path);
    std::ifstream stream(path, std::ios::binary);
    if (!stream) fail("you may not be allowed to");
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (const char* const reason = intake::foreignFileReason(bytes)) fail(reason);
    return bytes;
}

intake::Workbook opened(const intake::TextSource& file, const intake::EndMark& never) {
    try {
        return {file, never};
    } catch (const intake::WorkbookFault& fault) {
        fail(fault.what());
    }
}

/// In quotes for SQLite, whatever the name.
std::string quotedName(const std::string& name) {
    std::string quoted = "\"";
    for (const char c : name)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string declarationOf(const std::string& name, const SheetTable& table) {
    std::string columns;
    for (const std::string& column : table.columns())
        columns += (columns.empty() ? "" : ", ") + quotedName(column) + " COLLATE NOCASE";
    return "CREATE TABLE " + quotedName(name) + "(" + columns + ")";
}

void bind(sqlite3_stmt* statement, int place, const Cell& cell) {
    if (cell.kind == CellKind::TEXT) {
        sqlite3_bind_text(statement, place, cell.text.data(), static_cast<int>(cell.text.size()),
                          SQLITE_STATIC);
    } else {
        sqlite3_bind_double(statement, place, cell.number);
    }
}

/// A blank row is a record too.
void bindRow(sqlite3_stmt* statement, const SheetTable& table, uint32_t row) {
    sqlite3_clear_bindings(statement);
    const std::size_t position = table.position(row);
    for (std::size_t i = 0; table.isAt(position, row) && i < table.columns().size(); ++i) {
        Cell cell;
        if (table.value(position, i, cell)) bind(statement, static_cast<int>(i) + 1, cell);
    }
}

}  // namespace

SheetDatabase::SheetDatabase(const std::string& path, bool hasHeader, Deadline end)
    : SqliteDatabase(end),
      hasHeader_(hasHeader),
      bytes_(contentOf(path)),
      file_(bytes_),
      workbook_(opened(file_, never_)) {}

std::vector<TableEntry> SheetDatabase::tables() {
    std::vector<TableEntry> tables;
    for (const intake::SheetEntry& sheet : workbook_.index().sheets())
        tables.push_back({"", sheet.name + "$", false});
    return tables;
}

std::vector<ColumnEntry> SheetDatabase::columns(const TableEntry& table) {
    std::vector<ColumnEntry> columns;
    const auto place = intake::findTable(workbook_.index(), table.name);
    if (!place) return columns;
    try {
        const SheetTable sheet(workbook_.sheet(place->sheet), place->range, hasHeader_);
        for (const std::string& name : sheet.columns())
            columns.push_back({name, ""});
    } catch (const intake::WorkbookFault& fault) {
        fail(fault.what());
    }
    return columns;
}

void SheetDatabase::copy(const std::string& name, const SheetTable& table) const {
    sqlite3_exec(handle(), declarationOf(name, table).c_str(), nullptr, nullptr, nullptr);
    std::string places;
    for (std::size_t i = 0; i < table.columns().size(); ++i)
        places += i == 0 ? "?" : ",?";
    sqlite3_stmt* statement = nullptr;
    const std::string insertion = "INSERT INTO " + quotedName(name) + " VALUES(" + places + ")";
    sqlite3_prepare_v2(handle(), insertion.c_str(), -1, &statement, nullptr);
    for (uint32_t row = table.firstRow(); statement != nullptr && row < table.endRow(); ++row) {
        bindRow(statement, table, row);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}

std::unique_ptr<Rows> SheetDatabase::query(const std::string& query) {
    const QueryText text(query);
    for (const QueryWord& word : text.words()) {
        const auto place = intake::findTable(workbook_.index(), word.text);
        const std::string name = intake::foldCase(word.text);
        const bool isKnown = std::find(copied_.begin(), copied_.end(), name) != copied_.end();
        if (!place || isKnown) continue;
        try {
            copy(word.text, SheetTable(workbook_.sheet(place->sheet), place->range, hasHeader_));
        } catch (const intake::WorkbookFault& fault) {
            fail(fault.what());
        }
        copied_.push_back(name);
    }
    return SqliteDatabase::query(query);
}

}  // namespace probe
