#pragma once

#include <cstddef>

namespace intake {

/// What the process holds at the moment.
struct Holdings {
    Holdings();

    size_t residentKb;
    size_t allocatedKb;  // by malloc, and not freed yet
    size_t threads;
    size_t descriptors;
};

}  // namespace intake
