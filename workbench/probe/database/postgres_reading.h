#pragma once

#include <string>

namespace probe {

/// NAME=VALUE of the variable that makes PostgreSQL refuse what writes, to whoever connects from a
/// process that has it in its environment. What the variable says already stays.
std::string variableThatHoldsPostgresToReading();

}  // namespace probe
