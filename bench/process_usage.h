#pragma once

// What the running process has cost so far, as the system counts it.

namespace bench {

/// Processor time of all threads, user and system, in seconds.
double cpuSeconds();

/// What a thread has cost.
struct ThreadUsage {
    double milliseconds = 0;  // processor time, user and system
    double waits = 0;         // how often it slept or stood before a lock

    ThreadUsage& operator+=(const ThreadUsage& more);
    ThreadUsage operator-(const ThreadUsage& less) const;
};

/// Of the calling thread, so far.
ThreadUsage threadUsage();

/// The most memory that was resident at one time, in bytes.
double peakBytes();

/// The memory that is resident now, in bytes.
double residentBytes();

/// Seconds since some moment in the past.
double wallSeconds();

}  // namespace bench
