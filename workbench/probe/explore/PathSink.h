#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace probe {

/// What takes the paths of names of a document while it is read. Children are told while their
/// parent is open, and only of the innermost one that is.
class PathSink {
public:
    using Id = uint32_t;
    static constexpr Id ROOT = 0;
    static constexpr Id NONE = static_cast<Id>(-1);

    enum class Kind : uint8_t { Null, Text, Number, Switch, Array, Object };

    virtual ~PathSink() = default;

    /// The child of that name; NONE when it is not kept. `hint` is where among the children it
    /// probably stands, and is moved on.
    virtual Id child(Id parent, std::string_view name, std::size_t& hint) = 0;

    /// One more value that a path selects.
    virtual void count(Id node, Kind kind, std::string_view value) = 0;

    /// A value that was counted, or is counted by now, ends.
    virtual void end(Id /*node*/) {}

    /// Whether nothing more of the document is of use.
    virtual bool hasEnough() const { return false; }

    /// Whether the text of a value makes a difference.
    virtual bool wantsText(Id node) const = 0;
};

}  // namespace probe
