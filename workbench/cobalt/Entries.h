#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "workbench/cobalt/Origin.h"

namespace cobalt {

struct Entry;
class KeyIndex;
class Value;

/// The members of a structure or the elements of an array: named by text, in order of creation,
/// each name once. The elements of a list are named "0", "1", "2" and so on. Finding is quick for
/// any number of entries. References hold until the next entry is added.
class Entries {
public:
    Entries();
    Entries(const Entries& other);
    Entries(Entries&& other) noexcept;
    Entries& operator=(const Entries& other);
    Entries& operator=(Entries&& other) noexcept;
    ~Entries();

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    const Entry* begin() const;
    const Entry* end() const;
    const Entry& operator[](std::size_t position) const;

    /// The value of that name, or null.
    const Value* find(std::string_view key) const;

    /// The value of that name, made as an empty text at the end when there is none.
    Value& define(std::string_view key);

    /// The same for the entry itself.
    Entry& defineEntry(std::string_view key);

    /// Takes over every entry of `other`, each of this origin. Names that exist keep their place.
    void merge(Entries other, Origin origin = {});

    /// Gives back the memory that was set aside for more entries.
    void shrinkToFit();

private:
    std::size_t findPosition(std::string_view key) const;

    std::vector<Entry> entries_;
    std::unique_ptr<KeyIndex> index_;  // null while there are too few entries to need one
};

}  // namespace cobalt
