#include "platform/linux/workbook/sheet_module.h"

#include <algorithm>
#include <map>
#include <new>
#include <set>
#include <span>

#include "formats/text/ascii.h"
#include "formats/text/fold_case.h"
#include "formats/workbook/WorkbookFault.h"
#include "platform/linux/workbook/ColumnIndex.h"

namespace intake {

namespace {

struct Table : sqlite3_vtab {
    const SheetTable* rows = nullptr;
    std::vector<int> columns;  // of the sheet's table, by those of SQLite's
    std::map<int, std::unique_ptr<ColumnIndex>> indexes;  // null for a column asked for once
};

/// Goes through all rows, or through those that an index found.
struct Cursor : sqlite3_vtab_cursor {
    uint32_t row = 0;
    size_t position = 0;  // of the row, or of the next that holds values
    bool blank = false;   // the row holds no values
    bool indexed = false;
    std::span<const uint32_t> found;  // the positions of the row and of those to come
};

Table& tableOf(sqlite3_vtab_cursor* cursor) {
    return *static_cast<Table*>(cursor->pVtab);
}

const SheetTable& rowsOf(sqlite3_vtab_cursor* cursor) {
    return *tableOf(cursor).rows;
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
            taken.insert(lowerCase(word)).second) {
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

/// Whether a constraint compares with a value of another table. What is compared with a constant,
/// or with a list, is answered by looking through all rows, which keeps their order.
bool isJoin(sqlite3_index_info* info, int number) {
    const auto& constraint = info->aConstraint[number];
    sqlite3_value* constant = nullptr;
    return constraint.usable != 0 && constraint.op == SQLITE_INDEX_CONSTRAINT_EQ &&
           constraint.iColumn >= 0 && sqlite3_vtab_in(info, number, -1) == 0 &&
           sqlite3_vtab_rhs_value(info, number, &constant) != SQLITE_OK;
}

/// Offers an index where there is use for one. SQLite compares what it finds once more. All tables
/// are said to be of one size: then a join begins with the table that its query names first, and
/// keeps the order of its rows.
int plan(sqlite3_vtab*, sqlite3_index_info* info) {
    constexpr sqlite3_int64 ROWS = 100000;
    constexpr sqlite3_int64 ROWS_OF_LOOKUP = 2;
    constexpr double COST_OF_LOOKUP = 20;
    info->estimatedRows = ROWS;
    info->estimatedCost = ROWS;
    for (int number = 0; number < info->nConstraint; ++number) {
        if (isJoin(info, number)) {
            info->aConstraintUsage[number].argvIndex = 1;
            info->idxNum = info->aConstraint[number].iColumn + 1;
            info->estimatedRows = ROWS_OF_LOOKUP;
            info->estimatedCost = COST_OF_LOOKUP;
            break;
        }
    }
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
    if (!cursor.indexed) {
        cursor.blank = !rows.isAt(cursor.position, cursor.row);
    } else if (!cursor.found.empty()) {
        cursor.position = cursor.found.front();
        cursor.row = rows.rowAt(cursor.position);
    }
}

/// The index of a column; null when it is asked for the first time, for then looking through all
/// rows takes no longer than making it.
const ColumnIndex* indexOf(Table& table, int column) {
    const auto [place, isNew] = table.indexes.try_emplace(column);
    if (!isNew && place->second == nullptr) {
        const int inSheet = table.columns[static_cast<size_t>(column)];
        place->second = std::make_unique<ColumnIndex>(*table.rows, static_cast<size_t>(inSheet));
    }
    return place->second.get();
}

std::span<const uint32_t> find(const ColumnIndex& index, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return index.find(sqlite3_value_double(value));
        case SQLITE_TEXT: {
            const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            return index.find({text, static_cast<size_t>(sqlite3_value_bytes(value))});
        }
        default:
            return {};  // equal to nothing
    }
}

/// `plannedColumn` is 0, or one above the column whose value is given.
int rewind(sqlite3_vtab_cursor* base, int plannedColumn, const char*, int, sqlite3_value** values) {
    auto& cursor = *static_cast<Cursor*>(base);
    const SheetTable& rows = rowsOf(base);
    try {
        const ColumnIndex* const index =
            plannedColumn == 0 ? nullptr : indexOf(tableOf(base), plannedColumn - 1);
        cursor.indexed = index != nullptr;
        cursor.blank = false;
        if (cursor.indexed) {
            cursor.found = find(*index, values[0]);
        } else {
            cursor.row = rows.firstRow();
            cursor.position = rows.position(cursor.row);
        }
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
    settle(cursor, rows);
    return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* base) {
    auto& cursor = *static_cast<Cursor*>(base);
    if (cursor.indexed) {
        cursor.found = cursor.found.subspan(1);
    } else {
        cursor.position += cursor.blank ? 0 : 1;
        ++cursor.row;
    }
    settle(cursor, rowsOf(base));
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor* base) {
    const auto& cursor = *static_cast<Cursor*>(base);
    const bool ended = cursor.indexed ? cursor.found.empty() : cursor.row >= rowsOf(base).endRow();
    return ended ? 1 : 0;
}

/// Gives a value to SQLite: numbers and dates as REAL, so that divisions are what one expects, and
/// booleans as INTEGER, which nothing else is. Texts are lent, since the sheet outlives the query.
int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int number) {
    const auto& cursor = *static_cast<Cursor*>(base);
    const Table& table = tableOf(base);
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
