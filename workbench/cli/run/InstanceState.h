#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace workbench {

/// How an instance is doing, the most urgent first.
enum class State { Failed, Late, Empty, Stale, Loading, Waiting, Loaded };

/// What is shown of an instance. Times are in seconds. Plain values; any thread.
struct InstanceState {
    std::string name;
    State state = State::Waiting;
    std::optional<std::size_t> records;     // of the last load
    std::optional<std::size_t> before;      // where that has changed a short time ago
    std::size_t leftOver = 0;               // from older loads
    std::optional<double> age;              // since the last answer
    std::optional<double> duration;         // of the last load
    std::optional<double> next;             // until the next load begins
    std::string words;                      // what is wrong or waited for
    std::string target = {};                // where its records go: "League, DataTable"
    std::optional<std::size_t> bytes = {};  // that the last load wrote
    bool isDraft = false;                   // edits wait to be taken over
    std::uint32_t writer = 0;               // another of the same name has another
    std::uint64_t revision = 0;             // of its parameters
};

}  // namespace workbench
