#pragma once

#include <cstddef>
#include <optional>

#include "workbench/cli/Table.h"

namespace workbench {

/// How much room results have: all that they need where no terminal shows them, else the
/// terminal's. `setColumns`, what the user has asked for by COLUMNS, takes the place of its width.
PageSize pageSize(std::optional<std::size_t> terminalColumns,
                  std::optional<std::size_t> setColumns);

}  // namespace workbench
