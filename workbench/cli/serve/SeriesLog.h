#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workbench/cli/run/LiveInstance.h"

namespace workbench {

struct SeriesPoint {
    double time;  // in seconds since 1970
    double value;
};

/// What is known of an instance.
struct InstanceSeries {
    struct Series {
        std::string name;
        bool isText;  // its numbers are written as texts
        std::vector<SeriesPoint> points;
    };
    std::vector<Series> series;
    std::size_t leftOut = 0;  // names
};

/// The numbers that the last loads of each instance have written, by name. Host's thread.
class SeriesLog {
public:
    void add(const LoadEvent& event);

    /// Of an instance, the oldest first.
    InstanceSeries of(std::uint32_t writer) const;

    /// Forgets those of other instances.
    void keepOnly(const std::set<std::uint32_t>& writers);

private:
    struct Series {
        std::size_t seenAt = 0;  // the number of the load that wrote it last
        bool isText = false;
        std::deque<SeriesPoint> points;
    };
    struct Writer {
        std::size_t loads = 0;
        std::map<std::string, Series> series;
        std::map<std::string, std::size_t> leftOut;  // names, some of them, with their last load
    };

    static void addNumber(const WrittenNumber& number, double time, Writer& writer);
    static void dropUnseen(Writer& writer);

    std::map<std::uint32_t, Writer> writers_;
};

}  // namespace workbench
