#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/cobalt/Cursor.h"
#include "workbench/cobalt/Value.h"

namespace cobalt {

/// What stands left of an assignment's "=": a name, name[key], or name[first-last]. The name and
/// the key belong to the text that was parsed.
struct Target {
    enum class Kind { Whole, Entry, Range };

    Kind kind = Kind::Whole;
    std::string_view name;
    std::string_view key;    // of an entry
    std::int64_t first = 0;  // of a range
    std::int64_t last = -1;  // below `first` in an empty range
};

/// The values right of the "=". `separated` when commas stood between or after them.
struct AssignedValues {
    std::vector<Value> values;
    bool separated = false;
};

/// Reads a target up to its "=", which is not read. Throws ParseFailure.
Target readTarget(Cursor& cursor);

/// The entry that one value is set to by a target with this in its brackets: what reads as a range,
/// such as 7-9, has the value for its first element.
std::string entrySetBy(std::string_view brackets);

/// Throws ParseFailure at `offset` when the target is a range with room for fewer values.
void requireRoom(const Target& target, std::size_t count, std::size_t offset);

/// The one value that the target is set to. For a range this is an array of its elements, at most
/// as many as it has room for.
Value combine(const Target& target, AssignedValues assigned);

/// Sets `slot`, the value of the target's name, or the part of it that the target means. Entries
/// bear the origin.
void assign(Value& slot, const Target& target, Value value, Origin origin = {});

}  // namespace cobalt
