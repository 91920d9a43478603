#include "workbench/probe/database/sql_names.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace probe {

namespace {

// Those that people call tables and columns by.
constexpr std::array keywords{
    "all",      "analyse", "analyze", "and",    "any",     "as",      "asc",    "between",
    "by",       "case",    "check",   "column", "create",  "default", "delete", "desc",
    "distinct", "drop",    "else",    "end",    "except",  "for",     "from",   "group",
    "having",   "in",      "index",   "insert", "into",    "is",      "join",   "key",
    "left",     "like",    "limit",   "match",  "natural", "not",     "null",   "offset",
    "on",       "or",      "order",   "outer",  "primary", "rank",    "range",  "references",
    "right",    "row",     "rows",    "select", "set",     "table",   "then",   "to",
    "union",    "unique",  "update",  "user",   "using",   "values",  "view",   "when",
    "where",    "window",  "with"};

bool isPlain(const std::string& name) {
    const bool isWord = !name.empty() && !intake::isDigit(name.front()) &&
                        std::all_of(name.begin(), name.end(), [](char c) {
                            return (c >= 'a' && c <= 'z') || intake::isDigit(c) || c == '_';
                        });
    const bool isKeyword = std::any_of(keywords.begin(), keywords.end(),
                                       [&](const char* each) { return name == each; });
    return isWord && !isKeyword;
}

}  // namespace

std::string writtenName(const std::string& name, const Database& database) {
    if (isPlain(name)) return name;
    const char opening = database.quote();
    const char closing = opening == '[' ? ']' : opening;
    std::string written(1, opening);
    for (const char c : name)
        written.append(c == closing ? 2 : 1, c);
    return written + closing;
}

std::string writtenName(const TableEntry& table, const Database& database) {
    const std::string schema =
        table.schema.empty() ? "" : writtenName(table.schema, database) + ".";
    return schema + writtenName(table.name, database);
}

}  // namespace probe
