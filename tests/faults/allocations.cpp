#include "tests/faults/allocations.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstddef>

#include "tests/faults/call_names.h"

// The C library's own functions, behind those that this file takes the place of.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

namespace intake {

namespace {

std::atomic<bool> counting = false;
std::atomic<uint64_t> count = 0;
std::atomic<uint64_t> failingNumber = 0;
std::atomic<Failing> failing = Failing::NONE;
std::atomic<int64_t> inUse = 0;
CallNames place;
thread_local int uncounted = 0;

bool isToFail() {
    if (!counting || uncounted > 0) {
        return false;
    }
    const uint64_t number = ++count;
    const bool someFail = failing == Failing::ONE || failing == Failing::ALL_BEHIND;
    if (!someFail || number < failingNumber) {
        return false;
    }
    if (number == failingNumber) {
        place = callNames();
    }
    return failing == Failing::ALL_BEHIND || number == failingNumber;
}

/// The C library leaves this error where it found room in another arena than that of the thread.
void leaveErrorOfFirstAttempt() {
    if (counting && uncounted == 0 && failing == Failing::FIRST_ATTEMPTS) {
        errno = ENOMEM;
    }
}

void* noted(void* block) {
    inUse += block == nullptr ? 0 : 1;
    leaveErrorOfFirstAttempt();
    return block;
}

template <class Allocate>
void* allocate(Allocate allocate) {
    if (isToFail()) {
        errno = ENOMEM;
        return nullptr;
    }
    return noted(allocate());
}

}  // namespace

void countAllocations(Failing which, uint64_t number) {
    count = 0;
    failing = which;
    failingNumber = number;
    place[0] = 0;
    counting = true;
}

uint64_t endCounting() {
    counting = false;
    return count;
}

Uncounted::Uncounted() {
    ++uncounted;
}

Uncounted::~Uncounted() {
    --uncounted;
}

const char* placeOfFailure() {
    return place.data();
}

int64_t blocksInUse() {
    return inUse;
}

}  // namespace intake

extern "C" {

void* malloc(size_t size) {
    return intake::allocate([&] { return __libc_malloc(size); });
}

void* calloc(size_t count, size_t size) {
    return intake::allocate([&] { return __libc_calloc(count, size); });
}

void* realloc(void* block, size_t size) {
    if (block == nullptr) {
        return malloc(size);
    }
    if (size == 0) {
        free(block);
        return nullptr;
    }
    if (intake::isToFail()) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const moved = __libc_realloc(block, size);
    intake::leaveErrorOfFirstAttempt();
    return moved;
}

void* memalign(size_t alignment, size_t size) {
    return intake::allocate([&] { return __libc_memalign(alignment, size); });
}

void* aligned_alloc(size_t alignment, size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** block, size_t alignment, size_t size) {
    *block = memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

void free(void* block) {
    intake::inUse -= block == nullptr ? 0 : 1;
    __libc_free(block);
}

}  // extern "C"
