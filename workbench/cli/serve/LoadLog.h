#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "workbench/cli/run/LiveInstance.h"

namespace workbench {

/// The last loads of each instance, as JSON, with what a closer look at some has found. Host's
/// thread. Instances are known by their writer, and told by the name that they have then.
class LoadLog {
public:
    using NameOf = std::function<std::string(std::uint32_t writer)>;

    explicit LoadLog(NameOf nameOf) : nameOf_(std::move(nameOf)) {}

    /// Returns the number of the load.
    std::uint64_t add(const LoadEvent& event);

    /// The loads that were added since the last call, as a JSON array; empty when there were none.
    std::string takeNew();

    /// The last hundred of each, those of an instance in their order, as a JSON array.
    std::string latest() const;

    /// A page of those of an instance as JSON, the newest first.
    std::string history(std::uint32_t writer, std::size_t from, std::size_t count) const;

    /// Keeps with a load what explains it, as JSON.
    void explain(std::uint32_t writer, std::uint64_t load, const std::string& explanation);

    /// A load with its explanation as JSON; nothing when it is not kept any more.
    std::optional<std::string> explained(std::uint32_t writer, std::uint64_t load) const;

    /// Forgets those of other instances.
    void keepOnly(const std::set<std::uint32_t>& writers);

private:
    struct Load {
        std::uint32_t writer;
        std::uint64_t number;
        LoadReport report;
        std::string line;  // what a log says of it
        std::optional<std::size_t> newRecords;
        std::optional<std::size_t> goneRecords;
        std::string explanation;  // empty for none
    };
    using Loads = std::deque<Load>;

    std::string jsonOf(const Load& load) const;
    std::string historic(const Load& load) const;
    const Load* find(std::uint32_t writer, std::uint64_t number) const;

    const NameOf nameOf_;
    std::uint64_t last_ = 0;
    std::vector<Load> new_;
    std::map<std::uint32_t, Loads> kept_;
};

}  // namespace workbench
