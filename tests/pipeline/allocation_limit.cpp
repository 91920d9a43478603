#include "tests/pipeline/allocation_limit.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace intake {

namespace {

constexpr size_t LARGE = 1'000'000;

std::atomic<size_t> largestAllocation = NO_LIMIT;
thread_local size_t largeFreed = 0;

}  // namespace

void limitAllocations(size_t bytes) {
    largestAllocation = bytes;
}

size_t largeBlocksFreed() {
    return largeFreed;
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

void operator delete(void* block, size_t bytes) noexcept {
    intake::largeFreed += bytes >= intake::LARGE ? 1 : 0;
    std::free(block);
}
