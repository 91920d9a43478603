#pragma once

#include <cstdint>

namespace intake {

/// One node of a parsed document, as it is stored.
struct JsonEntry {
    static constexpr uint32_t MAX_NAME_LENGTH = (1U << 28) - 1;

    uint32_t position;  // of the text in the source; of a container, the node behind it
    uint32_t length;    // of the text; of a container, its children; of a bool, its value
    uint32_t nameOffset;
    uint32_t nameLength : 28;
    uint32_t type : 4;
};
static_assert(sizeof(JsonEntry) == 16);

}  // namespace intake
