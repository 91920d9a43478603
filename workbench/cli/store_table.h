#pragma once

#include <string>

#include "workbench/cli/Table.h"
#include "workbench/cobalt/Store.h"
#include "workbench/lumo/SharedMemories.h"

namespace workbench {

/// The store for people to read: a table for each field that holds records, an array or a
/// structure, then one table of the plain fields, then the shared memories that hold anything.
std::string storeTables(const cobalt::Store& store, const lumo::SharedMemories& memories,
                        const PageSize& page);

/// What one load wrote into a store that was empty, as one table: a row for each record.
Table recordsOf(const cobalt::Store& loaded, std::size_t maximumRows);

}  // namespace workbench
