#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/cobalt/Value.h"

namespace cobalt {

/// Finds entries by name: a hash table of positions, which stay true when the entries move in
/// memory. Owned by its Entries, which tells it of every entry. Entries are never removed.
class KeyIndex {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    explicit KeyIndex(const std::vector<Entry>& entries);

    /// The position of the entry of that name, or none.
    std::size_t find(const std::vector<Entry>& entries, std::string_view key) const;

    /// Takes in the last of the entries, whose name must be new.
    void addLast(const std::vector<Entry>& entries);

private:
    std::size_t slotFor(const std::vector<Entry>& entries, std::string_view key) const;
    void rebuild(const std::vector<Entry>& entries);

    std::vector<std::uint32_t> slots_;  // position + 1, or 0 where free; a power of two of them
};

}  // namespace cobalt
