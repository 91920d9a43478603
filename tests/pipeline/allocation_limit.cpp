#include "tests/pipeline/allocation_limit.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace intake {

namespace {

std::atomic<size_t> largestAllocation = NO_LIMIT;

}  // namespace

void limitAllocations(size_t bytes) {
    largestAllocation = bytes;
}

}  // namespace intake

void* operator new(size_t bytes) {
    void* const block = bytes > intake::largestAllocation ? nullptr : std::malloc(bytes);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, size_t) noexcept {
    std::free(block);
}
