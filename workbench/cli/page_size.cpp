#include "workbench/cli/page_size.h"

namespace workbench {

PageSize pageSize(std::optional<std::size_t> terminalColumns,
                  std::optional<std::size_t> setColumns) {
    PageSize page;
    if (!terminalColumns) page.rows = unlimited;
    if (!terminalColumns && !setColumns) page.cellWidth = unlimited;
    page.columns = setColumns.value_or(terminalColumns.value_or(unlimited));
    return page;
}

}  // namespace workbench
