#include "workbench/probe/database/postgres_reading.h"

#include <cstdlib>

namespace probe {

std::string variableThatHoldsPostgresToReading() {
    const char* const present = std::getenv("PGOPTIONS");
    const std::string options = present == nullptr ? "" : present + std::string(" ");
    return "PGOPTIONS=" + options + "-c default_transaction_read_only=on";
}

}  // namespace probe
