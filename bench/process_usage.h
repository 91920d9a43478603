#pragma once

// What the running process has cost so far, as the system counts it.

namespace bench {

/// Processor time of all threads, user and system, in seconds.
double cpuSeconds();

/// Processor time of the calling thread, user and system, in milliseconds.
double threadCpuMilliseconds();

/// The most memory that was resident at one time, in bytes.
double peakBytes();

/// Seconds since some moment in the past.
double wallSeconds();

}  // namespace bench
