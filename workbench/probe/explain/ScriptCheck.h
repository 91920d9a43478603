#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Finds the names and values that the script, which escapes nothing, cannot carry to the store.
/// Borrows the settings.
class ScriptCheck {
public:
    explicit ScriptCheck(const Settings& settings) : settings_(settings) {}

    /// The name of a field, and the key of a record, which stands in brackets or names a structure.
    void name(std::string_view name);
    void key(std::string_view key);

    /// All names of the fields of a record, of which one that comes twice loses a value.
    void record(std::vector<std::string_view> names);

    /// A value of the field of that name.
    void value(std::string_view name, std::string_view value);

    /// Notes what was found.
    void tell(Ladder& ladder) const;

private:
    struct Finding {
        std::size_t count = 0;
        std::string first;  // a sentence about the first one
    };

    const Settings& settings_;
    std::unordered_map<std::string, bool> names_;  // whether they arrive
    std::set<std::string, std::less<>> repeatedNames_;
    Finding badNames_;
    Finding badKeys_;
    Finding badValues_;
    Finding runningValues_;  // that go on behind their frame
};

}  // namespace probe
