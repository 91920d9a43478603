#include "workbench/cobalt/KeyIndex.h"

#include <bit>
#include <functional>

namespace cobalt {

KeyIndex::KeyIndex(const std::vector<Entry>& entries) {
    rebuild(entries);
}

std::size_t KeyIndex::find(const std::vector<Entry>& entries, std::string_view key) const {
    const std::uint32_t slot = slots_[slotFor(entries, key)];
    return slot == 0 ? none : slot - 1;
}

void KeyIndex::addLast(const std::vector<Entry>& entries) {
    if (entries.size() * 2 > slots_.size()) {
        rebuild(entries);
        return;
    }
    slots_[slotFor(entries, entries.back().key)] = static_cast<std::uint32_t>(entries.size());
}

// The slot that holds the key, or the free one where it belongs.
std::size_t KeyIndex::slotFor(const std::vector<Entry>& entries, std::string_view key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(key) & mask;
    while (slots_[slot] != 0 && entries[slots_[slot] - 1].key != key)
        slot = (slot + 1) & mask;
    return slot;
}

void KeyIndex::rebuild(const std::vector<Entry>& entries) {
    slots_.assign(std::bit_ceil(entries.size() * 4), 0);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        slots_[slotFor(entries, entries[i].key)] = static_cast<std::uint32_t>(i + 1);
    }
}

}  // namespace cobalt
