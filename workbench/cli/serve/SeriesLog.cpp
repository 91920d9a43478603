#include "workbench/cli/serve/SeriesLog.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace workbench {

namespace {

// Of an instance:
constexpr std::size_t mostSeries = 200;
constexpr std::size_t mostLeftOut = 1000;
constexpr std::size_t mostPoints = 500;

double secondsSince1970(std::chrono::system_clock::time_point time) {
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

}  // namespace

void SeriesLog::add(const LoadEvent& event) {
    if (event.numbers.empty()) return;
    Writer& writer = writers_[event.writer];
    ++writer.loads;
    dropUnseen(writer);
    const double time = secondsSince1970(event.report.time);
    for (const WrittenNumber& number : event.numbers) {
        if (std::isfinite(number.value)) addNumber(number, time, writer);
    }
}

/// Names that come and go leave their place to others.
void SeriesLog::dropUnseen(Writer& writer) {
    const auto isUnseen = [&](std::size_t load) { return writer.loads - load > mostPoints; };
    std::erase_if(writer.series, [&](const auto& each) { return isUnseen(each.second.seenAt); });
    std::erase_if(writer.leftOut, [&](const auto& each) { return isUnseen(each.second); });
}

void SeriesLog::addNumber(const WrittenNumber& number, double time, Writer& writer) {
    if (writer.series.size() == mostSeries && !writer.series.contains(number.name)) {
        const bool isTold =
            writer.leftOut.size() < mostLeftOut || writer.leftOut.contains(number.name);
        if (isTold) writer.leftOut[number.name] = writer.loads;
        return;
    }
    writer.leftOut.erase(number.name);
    Series& series = writer.series[number.name];
    series.seenAt = writer.loads;
    series.isText = number.isText;
    series.points.push_back({time, number.value});
    if (series.points.size() > mostPoints) series.points.pop_front();
}

InstanceSeries SeriesLog::of(std::uint32_t writer) const {
    InstanceSeries all;
    const auto known = writers_.find(writer);
    if (known == writers_.end()) return all;
    for (const auto& [name, series] : known->second.series)
        all.series.push_back({name, series.isText, {series.points.begin(), series.points.end()}});
    all.leftOut = known->second.leftOut.size();
    return all;
}

void SeriesLog::keepOnly(const std::set<std::uint32_t>& writers) {
    std::erase_if(writers_, [&](const auto& each) { return !writers.contains(each.first); });
}

}  // namespace workbench
