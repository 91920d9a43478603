#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "workbench/cli/run/LiveScene.h"

namespace workbench {

/// The numbers that the last loads of each instance have written, by name. Host's thread.
class SeriesLog {
public:
    void add(const LoadEvent& event);

    /// What there is, as JSON.
    std::string json(const LiveScene& scene) const;

    /// The numbers of one name, as it is told, as JSON, the oldest first; nothing where there are
    /// none.
    std::optional<std::string> json(std::uint32_t writer, const std::string& name,
                                    const Redaction& redact) const;

    /// Forgets those of other instances.
    void keepOnly(const std::set<std::uint32_t>& writers);

private:
    struct Point {
        double time;  // in seconds since 1970
        double value;
    };
    struct Series {
        std::size_t seenAt = 0;  // the number of the load that wrote it last
        bool isText = false;
        std::deque<Point> points;
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
