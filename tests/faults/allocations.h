#pragma once

#include <cstdint>

namespace intake {

/// Which allocations of a program that links this fail, counted from 1 on all threads.
enum class Failing {
    NONE,
    ONE,            // only this one
    ALL_BEHIND,     // this one and all that follow
    FIRST_ATTEMPTS  // none, but each leaves the error of an attempt that failed before
};

/// Counts from now on. Whatever asks for memory is counted, in our code and in libraries.
void countAllocations(Failing failing = Failing::NONE, uint64_t number = 0);

/// Ends counting, after which nothing fails; returns how many there were.
uint64_t endCounting();

/// What is allocated on this thread while one lives is not counted, and does not fail.
class Uncounted {
public:
    Uncounted();
    ~Uncounted();
    Uncounted(const Uncounted&) = delete;
    Uncounted& operator=(const Uncounted&) = delete;
};

/// Where the first one failed since counting began, as callNames gives it.
const char* placeOfFailure();

/// How many blocks are in use.
int64_t blocksInUse();

}  // namespace intake
