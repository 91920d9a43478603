#include "workbench/cli/serve/ReportIndex.h"

#include <algorithm>
#include <fstream>
#include <limits>

#include "workbench/cli/serve/LineReader.h"

namespace workbench {

namespace {

constexpr std::size_t mostLoads = 2'000'000;
constexpr std::size_t mostInstances = 1000;
constexpr std::size_t mostIndexes = 3;
constexpr auto unnamed = std::numeric_limits<std::uint16_t>::max();  // a further instance

std::string firstLineOf(const std::string& file) {
    std::string line;
    LineReader(file, longestReport, longestReport).next(line);
    return line;
}

bool endsLineAt(const std::string& file, std::uintmax_t end) {
    if (end == 0) return true;
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(end - 1));
    return stream.get() == '\n';
}

}  // namespace

/// A file that was begun anew has another first line, since that tells its time.
bool ReportIndex::isStartOf(const FileMark& mark) const {
    if (mark == mark_) return true;
    return mark.identity == mark_.identity && mark.size >= end_ && firstLineOf(file_) == start_ &&
           endsLineAt(file_, end_);
}

void ReportIndex::update(const FileMark& mark, const std::stop_token& stop) {
    if (mark == mark_) return;
    if (end_ == 0) start_ = firstLineOf(file_);
    LineReader reader(file_, longestReportFile, longestReport);
    reader.seek(end_);
    for (std::string line; places_.size() < mostLoads && !stop.stop_requested();) {
        const auto place = static_cast<std::uint32_t>(reader.place());
        if (!reader.next(line)) break;
        const auto load = reportedLoad(line);
        if (load) note(place, *load);
        if (!load) ++unreadable_;
    }
    end_ = reader.place();
    isCut_ = places_.size() == mostLoads || reader.isCut();
    mark_ = mark;
}

void ReportIndex::note(std::uint32_t place, const ReportedLoad& load) {
    places_.push_back(place);
    numbers_.push_back(numberOf(load));
}

std::uint16_t ReportIndex::numberOf(const ReportedLoad& load) {
    const auto known = instances_.find(load.report.instance);
    if (known == instances_.end() && instances_.size() == mostInstances) return unnamed;
    Summary& summary = instances_[load.report.instance];
    if (summary.loads++ == 0) {
        summary.number = static_cast<std::uint16_t>(instances_.size() - 1);
        summary.first = load.time;
    }
    if (!isGood(load.report.outcome)) ++summary.bad;
    summary.last = load.time;
    return summary.number;
}

std::vector<std::uint32_t> ReportIndex::placesOf(const std::string& instance) const {
    if (instance.empty()) return places_;
    std::vector<std::uint32_t> places;
    const auto known = instances_.find(instance);
    if (known == instances_.end()) return places;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (numbers_[i] == known->second.number) places.push_back(places_[i]);
    }
    return places;
}

const ReportIndex& ReportIndexes::of(const std::string& file, const std::stop_token& stop) {
    const FileMark mark = markOf(file);
    const auto known = std::find_if(indexes_.begin(), indexes_.end(),
                                    [&](const ReportIndex& each) { return each.file() == file; });
    if (known != indexes_.end() && known->isStartOf(mark)) {
        indexes_.splice(indexes_.begin(), indexes_, known);
    } else {
        if (known != indexes_.end()) indexes_.erase(known);
        indexes_.emplace_front(file);
    }
    if (indexes_.size() > mostIndexes) indexes_.pop_back();
    indexes_.front().update(mark, stop);
    return indexes_.front();
}

}  // namespace workbench
