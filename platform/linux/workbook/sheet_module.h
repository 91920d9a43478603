#pragma once

#include <sqlite3.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "formats/workbook/SheetTable.h"
#include "formats/workbook/Workbook.h"
#include "formats/workbook/table_names.h"

namespace intake {

/// What SQLite may do at the moment besides reading: it takes the declaration of a table's columns
/// for a change of the database.
struct QueryRights {
    bool declaring = false;
};

/// A table that queries can name. The sheet is read when SQLite first asks for the table's columns.
/// Owned by the connection; lives until the SQLite connection is closed.
struct SheetModule {
    Workbook& workbook;
    QueryRights& rights;
    std::string name;
    TablePlace place;
    bool header;
    std::vector<std::string>
        spellings;  // words of the query, which may name columns in another case
    std::unique_ptr<SheetTable> table = nullptr;
    std::exception_ptr failure = nullptr;  // why the table could not be made

    /// The column that SQLite calls so; a query may have named it in another case.
    std::optional<size_t> columnNamed(const char* name) const;
};

/// Makes a sheet's table known under its name. `module` outlives the connection.
void registerSheetModule(sqlite3* database, SheetModule& module);

}  // namespace intake
