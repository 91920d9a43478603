#pragma once

#include <cstdint>

namespace cobalt {

/// Which load put something into a store. Whoever executes a script says so.
struct Origin {
    std::uint32_t writer = 0;  // whose load; 0 for what came by no load
    std::uint32_t moment = 0;  // rises from load to load of a writer

    bool operator==(const Origin&) const = default;
};

}  // namespace cobalt
