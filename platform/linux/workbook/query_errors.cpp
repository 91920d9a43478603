#include "platform/linux/workbook/query_errors.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>

#include "platform/linux/base/com_failures.h"
#include "platform/linux/workbook/query_names.h"

namespace intake {

namespace {

constexpr std::string_view MISSING_TABLE = "no such table: ";
constexpr std::string_view MISSING_COLUMN = "no such column: ";

template <class Items, class NameOf>
std::string listed(const Items& items, NameOf nameOf) {
    std::string text;
    for (const auto& item : items) {
        text.append(text.empty() ? "" : ", ").append("\"").append(nameOf(item)).append("\"");
    }
    return text;
}

std::string listedSheets(const std::vector<SheetEntry>& sheets) {
    constexpr size_t MOST_LISTED = 10;
    const size_t count = std::min(sheets.size(), MOST_LISTED);
    const auto end = sheets.begin() + static_cast<std::ptrdiff_t>(count);
    std::string text = listed(std::vector<SheetEntry>(sheets.begin(), end),
                              [](const SheetEntry& sheet) { return sheet.name; });
    if (count < sheets.size()) {
        text.append(" and ").append(std::to_string(sheets.size() - count)).append(" more");
    }
    return text;
}

[[noreturn]] void throwNoTable(const std::string& path, const WorkbookIndex& index,
                               std::string name) {
    std::string what = "table \"" + name + "\"";
    if (name.ends_with('$')) {
        name.pop_back();
        what = "sheet \"" + name + "\"";
    }
    NO_TABLE.raise(WORKBOOK_PROVIDER,
                   "The workbook \"" + path + "\" has no " + what + "; its sheets are " +
                       listedSheets(index.sheets()) +
                       ". A query names a sheet with a dollar sign behind it, as in [Sheet1$]");
}

[[noreturn]] void throwNoColumn(const std::string& path,
                                const std::vector<std::unique_ptr<SheetModule>>& modules,
                                const std::string& query, const std::string& name) {
    std::string description =
        "There is no column \"" + name + "\" in the workbook \"" + path + "\".";
    const std::vector<std::string> names = namesIn(query);
    for (const auto& module : modules) {
        if (module->table != nullptr &&
            std::find(names.begin(), names.end(), module->name) != names.end()) {
            description +=
                " The columns of [" + module->name + "] are " +
                listed(module->table->columns(), [](const std::string& each) { return each; });
        }
    }
    throwQueryError(description);
}

}  // namespace

void throwQueryError(const std::string& description) {
    ERRORS_IN_COMMAND.raise(WORKBOOK_PROVIDER, description);
}

void throwQueryRefused(const std::string& path, const WorkbookIndex& index,
                       const std::vector<std::unique_ptr<SheetModule>>& modules,
                       const std::string& query, const SqliteError& error) {
    const std::string message = error.what();
    if (error.code() == SQLITE_EMPTY || error.code() == SQLITE_MISUSE) {
        throwQueryError(message);
    }
    if (message.starts_with(MISSING_TABLE)) {
        throwNoTable(path, index, message.substr(MISSING_TABLE.size()));
    }
    if (message.starts_with(MISSING_COLUMN)) {
        throwNoColumn(path, modules, query, message.substr(MISSING_COLUMN.size()));
    }
    throwQueryError("The query cannot be run on the workbook \"" + path + "\": " + message);
}

}  // namespace intake
