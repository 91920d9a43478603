#include "workbench/probe/sheet_fields.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace probe {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Words of the language of queries, in alphabetical order.
constexpr std::array<std::string_view, 63> reserved{"add",
                                                    "all",
                                                    "alter",
                                                    "and",
                                                    "as",
                                                    "autoincrement",
                                                    "between",
                                                    "case",
                                                    "cast",
                                                    "check",
                                                    "collate",
                                                    "commit",
                                                    "constraint",
                                                    "create",
                                                    "current_date",
                                                    "current_time",
                                                    "current_timestamp",
                                                    "default",
                                                    "deferrable",
                                                    "delete",
                                                    "distinct",
                                                    "drop",
                                                    "else",
                                                    "escape",
                                                    "except",
                                                    "exists",
                                                    "foreign",
                                                    "from",
                                                    "group",
                                                    "having",
                                                    "in",
                                                    "index",
                                                    "insert",
                                                    "intersect",
                                                    "into",
                                                    "is",
                                                    "isnull",
                                                    "join",
                                                    "limit",
                                                    "not",
                                                    "nothing",
                                                    "notnull",
                                                    "null",
                                                    "on",
                                                    "or",
                                                    "order",
                                                    "primary",
                                                    "raise",
                                                    "references",
                                                    "returning",
                                                    "select",
                                                    "set",
                                                    "table",
                                                    "then",
                                                    "to",
                                                    "transaction",
                                                    "union",
                                                    "unique",
                                                    "update",
                                                    "using",
                                                    "values",
                                                    "when",
                                                    "where"};

bool isReserved(const std::string& name) {
    return std::binary_search(reserved.begin(), reserved.end(), intake::lowerCase(name));
}

bool isPlainName(std::string_view text) {
    return !text.empty() && !intake::isDigit(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return intake::isLetter(c) || intake::isDigit(c) || c == '_' || !intake::isAscii(c);
           });
}

/// The name that a text is, without its brackets or quotes; empty when it is none.
std::string nameOf(std::string_view text) {
    const bool isBracketed = text.starts_with('[') && text.find(']') == text.size() - 1;
    const bool isQuoted = text.size() > 2 && (text.front() == '"' || text.front() == '`') &&
                          text.find(text.front(), 1) == text.size() - 1;
    if (isBracketed || isQuoted) return std::string(text.substr(1, text.size() - 2));
    return isPlainName(text) ? std::string(text) : "";
}

SheetField fieldOf(std::string_view text) {
    text = intake::trimmed(text, blanks);
    const std::string lower = intake::lowerCase(text);
    const auto as = lower.rfind(" as ");
    const auto source = intake::trimmed(text.substr(0, as), blanks);
    SheetField field{std::string(text), nameOf(source), "", 0};
    field.name = as == std::string::npos ? field.column
                                         : nameOf(intake::trimmed(text.substr(as + 4), blanks));
    return field;
}

}  // namespace

std::vector<SheetField> sheetFields(std::string_view range) {
    std::vector<SheetField> fields;
    if (intake::trimmed(range, blanks).empty()) return fields;
    int depth = 0;
    char quote = 0;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= range.size(); ++at) {
        const char sign = at < range.size() ? range[at] : ',';
        const bool isEnd = at == range.size() || (sign == ',' && depth == 0 && quote == 0);
        if (isEnd) {
            const auto text = intake::trimmed(range.substr(start, at - start), blanks);
            if (text != "*") {
                fields.push_back(fieldOf(text));
                fields.back().offset = static_cast<std::size_t>(text.data() - range.data());
            }
            start = at + 1;
        } else if (quote != 0) {
            if (sign == quote) quote = 0;
        } else if (sign == '"' || sign == '\'' || sign == '`') {
            quote = sign;
        } else if (sign == '(' || sign == '[') {
            ++depth;
        } else if (sign == ')' || sign == ']') {
            --depth;
        }
    }
    return fields;
}

std::string bracketed(const std::string& column) {
    const bool isPlain = isPlainName(column) && !isReserved(column);
    return isPlain ? column : "[" + column + "]";
}

}  // namespace probe
