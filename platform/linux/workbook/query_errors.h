#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/sqlite/SqliteError.h"
#include "platform/linux/workbook/sheet_module.h"

namespace intake {

/// What failures name as their source.
constexpr const char* WORKBOOK_PROVIDER = "Intake workbook provider";

/// Throws the PlatformError of a query that cannot be run.
[[noreturn]] void throwQueryError(const std::string& description);

/// Throws the PlatformError of a query that SQLite refuses, in words that name the
/// workbook and what it has instead of a sheet or column that is missing.
[[noreturn]] void throwQueryRefused(const std::string& path, const WorkbookIndex& index,
                                    const std::vector<std::unique_ptr<SheetModule>>& modules,
                                    const std::string& query, const SqliteError& error);

}  // namespace intake
