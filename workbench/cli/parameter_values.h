#pragma once

#include <cstdint>
#include <string_view>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/Record.h"

namespace workbench {

/// Writes a value, as a user writes it, into the record: a text as it is; a switch as 0, 1, true or
/// false; a choice as the text of an entry or as its index; a number in decimal. Returns the
/// parameter's host index. Throws UsageError, and changes nothing, for a name that is not
/// registered or a value that does not fit.
int32_t setParameter(const lumo::ParameterTable& parameters, lumo::Record& record,
                     std::string_view name, std::string_view value);

}  // namespace workbench
