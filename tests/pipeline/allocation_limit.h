#pragma once

#include <cstddef>
#include <cstdint>

namespace intake {

constexpr size_t NO_LIMIT = SIZE_MAX;

/// From now on allocations of more bytes fail, on every thread of a program that links this.
void limitAllocations(size_t bytes);

/// How many blocks of a million bytes or more the calling thread has freed.
size_t largeBlocksFreed();

}  // namespace intake
