#include "platform/linux/workbook/sheet_module.h"

#include <algorithm>
#include <new>
#include <set>

#include "platform/equal_ignoring_case.h"
#include "platform/linux/fold_case.h"
#include "platform/linux/workbook/workbook_errors.h"

namespace intake {

namespace {

struct Table : sqlite3_vtab {
    const SheetTable* rows = nullptr;
    std::vector<int> columns;  // of the sheet's table, by those of SQLite's
};

struct Cursor : sqlite3_vtab_cursor {
    uint32_t row = 0;
    size_t position = 0;  // of the row, or of the next that holds values
    bool blank = false;   // the row holds no values
};

const SheetTable& rowsOf(sqlite3_vtab_cursor* cursor) {
    return *static_cast<Table*>(cursor->pVtab)->rows;
}

std::string quoted(const std::string& name) {
    std::string text = "\"";
    for (const char character : name) {
        text.append(character == '"' ? 2 : 1, character);
    }
    return text + '"';
}

/// The query's spellings of the table's columns that SQLite would not recognise: it knows upper and
/// lower case of ASCII letters only.
std::vector<std::pair<std::string, size_t>> otherSpellings(const SheetModule& module) {
    std::vector<std::pair<std::string, size_t>> found;
    std::set<std::string> taken;
    for (const std::string& word : module.spellings) {
        const auto column = module.table->findColumn(word);
        if (column && !equalIgnoringCase(word, module.table->columns()[*column]) &&
            taken.insert(asciiLower(word)).second) {
            found.emplace_back(word, *column);
        }
    }
    return found;
}

/// Declares the columns. Texts compare without regard to case, as they do in a worksheet.
std::string declaration(const SheetModule& module, Table& table) {
    std::string text = "CREATE TABLE sheet(";
    const auto declare = [&](const std::string& name, size_t column, const char* rest) {
        text.append(table.columns.empty() ? "" : ",").append(quoted(name)).append(rest);
        table.columns.push_back(static_cast<int>(column));
    };
    for (size_t column = 0; column < module.table->columns().size(); ++column) {
        declare(module.table->columns()[column], column, " COLLATE NOCASE");
    }
    for (const auto& [name, column] : otherSpellings(module)) {
        declare(name, column, " HIDDEN COLLATE NOCASE");
    }
    return text + ")";
}

void readTable(sqlite3* database, SheetModule& module) {
    module.table = std::make_unique<SheetTable>(module.workbook.sheet(module.place.sheet),
                                                module.place.range, module.header);
    const size_t columns = module.table->columns().size();
    const int most = sqlite3_limit(database, SQLITE_LIMIT_COLUMN, -1);
    if (columns > static_cast<size_t>(most)) {
        const std::string& sheet = module.workbook.index().sheets()[module.place.sheet].name;
        throw WorkbookFault("the sheet \"" + sheet + "\" has " + std::to_string(columns) +
                            " columns, of which at most " + std::to_string(most) +
                            " can be read at once; name a range, such as [" + sheet + "$A1:Z100]");
    }
}

int connect(sqlite3* database, void* data, int, const char* const*, sqlite3_vtab** made, char**) {
    auto& module = *static_cast<SheetModule*>(data);
    try {
        readTable(database, module);
        auto table = std::make_unique<Table>();
        table->rows = module.table.get();
        const std::string columns = declaration(module, *table);
        module.rights.declaring = true;
        const int result = sqlite3_declare_vtab(database, columns.c_str());
        module.rights.declaring = false;
        if (result == SQLITE_OK) {
            *made = table.release();
        }
        return result;
    } catch (...) {
        module.failure = std::current_exception();
        return SQLITE_ERROR;
    }
}

int disconnect(sqlite3_vtab* table) {
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

int plan(sqlite3_vtab* table, sqlite3_index_info* info) {
    const SheetTable& rows = *static_cast<Table*>(table)->rows;
    info->estimatedRows = rows.endRow() - rows.firstRow();
    info->estimatedCost = static_cast<double>(info->estimatedRows);
    return SQLITE_OK;
}

int openCursor(sqlite3_vtab*, sqlite3_vtab_cursor** made) {
    *made = new (std::nothrow) Cursor;
    return *made == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor* cursor) {
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

void settle(Cursor& cursor, const SheetTable& rows) {
    cursor.blank = !rows.isAt(cursor.position, cursor.row);
}

int rewind(sqlite3_vtab_cursor* base, int, const char*, int, sqlite3_value**) {
    auto& cursor = *static_cast<Cursor*>(base);
    const SheetTable& rows = rowsOf(base);
    cursor.row = rows.firstRow();
    cursor.position = rows.position(cursor.row);
    settle(cursor, rows);
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* base) {
    auto& cursor = *static_cast<Cursor*>(base);
    cursor.position += cursor.blank ? 0 : 1;
    ++cursor.row;
    settle(cursor, rowsOf(base));
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor* cursor) {
    return static_cast<Cursor*>(cursor)->row >= rowsOf(cursor).endRow() ? 1 : 0;
}

/// Gives a value to SQLite: numbers and dates as REAL, so that divisions are what one expects, and
/// booleans as INTEGER, which nothing else is. Texts are lent, since the sheet outlives the query.
int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int number) {
    const auto& cursor = *static_cast<Cursor*>(base);
    const auto& table = *static_cast<Table*>(base->pVtab);
    Cell cell;
    if (cursor.blank ||
        !table.rows->value(cursor.position,
                           static_cast<size_t>(table.columns[static_cast<size_t>(number)]), cell)) {
        sqlite3_result_null(context);
    } else if (cell.kind == CellKind::TEXT) {
        sqlite3_result_text64(context, cell.text.data(), cell.text.size(), SQLITE_STATIC,
                              SQLITE_UTF8);
    } else if (cell.kind == CellKind::BOOLEAN) {
        sqlite3_result_int(context, cell.number != 0 ? 1 : 0);
    } else {
        sqlite3_result_double(context, cell.number);
    }
    return SQLITE_OK;
}

int rowNumber(sqlite3_vtab_cursor* cursor, sqlite3_int64* number) {
    *number = static_cast<Cursor*>(cursor)->row;
    return SQLITE_OK;
}

/// A module whose tables are there under its own name, without being created.
constexpr sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xConnect = connect;
    module.xBestIndex = plan;
    module.xDisconnect = disconnect;
    module.xOpen = openCursor;
    module.xClose = closeCursor;
    module.xFilter = rewind;
    module.xNext = next;
    module.xEof = atEnd;
    module.xColumn = column;
    module.xRowid = rowNumber;
    return module;
}

constexpr sqlite3_module MODULE = makeModule();

}  // namespace

std::optional<size_t> SheetModule::columnNamed(const char* wanted) const {
    return wanted == nullptr || table == nullptr ? std::nullopt : table->findColumn(wanted);
}

void registerSheetModule(sqlite3* database, SheetModule& module) {
    if (sqlite3_create_module(database, module.name.c_str(), &MODULE, &module) != SQLITE_OK) {
        throw std::bad_alloc();
    }
}

}  // namespace intake
