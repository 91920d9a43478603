#include "platform/linux/workbook/query_errors.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>

#include "formats/text/utf8.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/workbook/query_names.h"

namespace intake {

namespace {

constexpr std::string_view MISSING_TABLE = "no such table: ";
constexpr std::string_view MISSING_COLUMN = "no such column: ";

/// A name as errors show it: a cell may hold any amount of text.
std::string shortened(std::string_view name) {
    constexpr size_t MOST_BYTES = 100;
    size_t length = 0;
    while (length < std::min(name.size(), MOST_BYTES)) {
        length += utf8CharacterAt(name.substr(length)).length;
    }
    return std::string(name.substr(0, length)).append(length < name.size() ? "..." : "");
}

/// The first names, and how many others there are.
template <class Items, class NameOf>
std::string listed(const Items& items, NameOf nameOf) {
    constexpr size_t MOST_LISTED = 10;
    const size_t count = std::min(items.size(), MOST_LISTED);
    std::string text;
    for (size_t item = 0; item < count; ++item) {
        text.append(item == 0 ? "\"" : ", \"").append(shortened(nameOf(items[item]))).append("\"");
    }
    if (count < items.size()) {
        text.append(" and ").append(std::to_string(items.size() - count)).append(" more");
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
                       listed(index.sheets(), [](const SheetEntry& sheet) { return sheet.name; }) +
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
