#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// One of "Fields to read".
struct SheetField {
    std::string written;     // as it stands there
    std::string column;      // the column of the sheet that it is; empty for an expression
    std::string name;        // of the column of the result; empty where the database chooses it
    std::size_t offset = 0;  // of `written` in the list
};

/// What a list of fields asks for; one star asks for all columns and has no fields. Expressions are
/// not taken apart, and where nothing stands between commas is a field without a column.
std::vector<SheetField> sheetFields(std::string_view range);

/// The name of a column as a list of fields, or a query, has to write it.
std::string bracketed(const std::string& column);

}  // namespace probe
