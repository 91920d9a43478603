#pragma once

#include <string>

#include "workbench/cobalt/Store.h"

namespace workbench {

/// The whole store as one JSON object, a member for each field: texts as strings, numbers as they
/// were written, structures as objects, arrays as arrays when their keys are 0, 1, 2 and so on,
/// else as objects. A row of a table is its structure. Always valid UTF-8.
std::string storeJson(const cobalt::Store& store);

}  // namespace workbench
