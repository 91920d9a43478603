#pragma once

#include <cstdint>
#include <filesystem>
#include <list>
#include <map>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

#include "workbench/cli/run/FileMark.h"
#include "workbench/cli/serve/ReportedLoad.h"

namespace workbench {

/// So much of a report is read, in bytes.
constexpr std::uintmax_t longestReportFile = 256U << 20;

/// Where the loads stand in a report, so that a page of them is found without reading it all. Takes
/// six bytes a load, of two million at most. One thread at a time; asks the disk: for jobs.
class ReportIndex {
public:
    /// What is told of an instance.
    struct Summary {
        std::uint16_t number = 0;  // that stands for its name
        std::size_t loads = 0;
        std::size_t bad = 0;
        std::string first;  // times
        std::string last;
    };

    explicit ReportIndex(std::string file) : file_(std::move(file)) {}

    const std::string& file() const { return file_; }

    /// Whether the file that has this mark begins with what is known.
    bool isStartOf(const FileMark& mark) const;

    /// Reads on where it ended, if the file is not the one that it has read.
    void update(const FileMark& mark, const std::stop_token& stop);

    /// Where the lines begin that tell of an instance, or with an empty name of all; of further
    /// instances than a thousand only among all.
    std::vector<std::uint32_t> placesOf(const std::string& instance) const;

    const std::map<std::string, Summary>& instances() const { return instances_; }

    /// How many lines are no reports.
    std::size_t unreadable() const { return unreadable_; }

    /// Whether the file goes on behind what is known of it.
    bool isCut() const { return isCut_; }

private:
    void note(std::uint32_t place, const ReportedLoad& load);
    std::uint16_t numberOf(const ReportedLoad& load);

    const std::string file_;
    FileMark mark_;
    std::string start_;       // the first line
    std::uintmax_t end_ = 0;  // of what is known, in bytes
    std::vector<std::uint32_t> places_;
    std::vector<std::uint16_t> numbers_;  // of the instances
    std::map<std::string, Summary> instances_;
    std::size_t unreadable_ = 0;
    bool isCut_ = false;
};

/// The indexes of the reports that were asked for last. One thread at a time.
class ReportIndexes {
public:
    /// As the file is now. Stays until the next one is asked for.
    const ReportIndex& of(const std::string& file, const std::stop_token& stop);

private:
    std::list<ReportIndex> indexes_;  // the last one first
};

}  // namespace workbench
