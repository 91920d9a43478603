#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Counts the keys of the records that are loaded, and says what is wrong with them.
class KeyTally {
public:
    /// `thing` is what a source of this kind calls where a key comes from: "member", "column".
    KeyTally(std::string key, const char* thing) : key_(std::move(key)), thing_(thing) {}

    /// The key of the next record; nothing when it has none.
    void add(std::optional<std::string_view> key);

    std::size_t missing() const { return missing_; }
    std::size_t records() const { return records_; }

    /// How many entries the records make: each key once.
    std::size_t entries() const { return seen_.size(); }

    /// Notes what was counted. Records without a key that are left out count as a warning; when no
    /// record has one, that is for the caller to tell.
    void tell(Ladder& ladder) const;

private:
    std::string repeatedWords() const;
    std::string missingWords() const;
    std::string emptyWords() const;

    std::string key_;
    const char* thing_;
    std::size_t records_ = 0;
    std::size_t missing_ = 0;
    std::size_t empty_ = 0;
    std::unordered_set<std::string> seen_;  // as entries of the data store
    std::size_t repeated_ = 0;
    std::vector<std::string> examples_;  // of keys that were there already
};

/// Tells of records that are all written to one structure, of which one is left.
void tellOneStructure(std::size_t records, Ladder& ladder);

}  // namespace probe
