#pragma once

#include <cstddef>
#include <string_view>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// How many records a load has written: `written` is the script that was executed, in Shared Memory
/// mode the text that was stored. What the plugin itself reports may count others: those without a
/// key, those that another of the same key has replaced. By target mode,
///
///     DataTable, DataArray   the entries that are set, each key once
///     DataStructure          the fields that are set, but the plugin's own count
///     Data Field Array       the elements
///     Shared Memory          the pieces into which the delimiter divides the text; an empty text
///                            has none
///
/// JSON that is loaded without a path is one record in every mode but Shared Memory, or as many as
/// the array that it is has elements.
std::size_t writtenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                           const lumo::Record& record);

/// Throws UsageError when records could not be told apart in the text of a shared memory.
void requireCountable(const lumo::ParameterTable& parameters, const lumo::Record& record);

}  // namespace workbench
