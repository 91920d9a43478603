#include "workbench/cobalt/Entries.h"

#include <utility>

#include "workbench/cobalt/KeyIndex.h"
#include "workbench/cobalt/Value.h"

namespace cobalt {

namespace {

// Up to here, comparing the names one after another is as quick as an index.
constexpr std::size_t mostWithoutIndex = 16;

}  // namespace

Entries::Entries() = default;
Entries::Entries(Entries&& other) noexcept = default;
Entries& Entries::operator=(Entries&& other) noexcept = default;
Entries::~Entries() = default;

Entries::Entries(const Entries& other)
    : entries_(other.entries_),
      index_(other.index_ ? std::make_unique<KeyIndex>(*other.index_) : nullptr) {}

Entries& Entries::operator=(const Entries& other) {
    Entries copy(other);
    return *this = std::move(copy);
}

std::size_t Entries::size() const {
    return entries_.size();
}

const Entry* Entries::begin() const {
    return entries_.data();
}

const Entry* Entries::end() const {
    return entries_.data() + entries_.size();
}

const Entry& Entries::operator[](std::size_t position) const {
    return entries_[position];
}

const Value* Entries::find(std::string_view key) const {
    const std::size_t position = findPosition(key);
    return position == KeyIndex::none ? nullptr : &entries_[position].value;
}

Value& Entries::define(std::string_view key) {
    return defineEntry(key).value;
}

Entry& Entries::defineEntry(std::string_view key) {
    const std::size_t position = findPosition(key);
    if (position != KeyIndex::none) return entries_[position];
    entries_.push_back(Entry{std::string(key), Value(), {}});
    if (index_) {
        index_->addLast(entries_);
    } else if (entries_.size() > mostWithoutIndex) {
        index_ = std::make_unique<KeyIndex>(entries_);
    }
    return entries_.back();
}

void Entries::merge(Entries other, Origin origin) {
    for (Entry& entry : other.entries_)
        entry.origin = origin;
    if (entries_.empty()) {
        *this = std::move(other);
        return;
    }
    for (Entry& entry : other.entries_) {
        Entry& own = defineEntry(entry.key);
        own.value = std::move(entry.value);
        own.origin = origin;
    }
}

void Entries::shrinkToFit() {
    entries_.shrink_to_fit();
}

std::size_t Entries::findPosition(std::string_view key) const {
    if (index_) return index_->find(entries_, key);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].key == key) return i;
    }
    return KeyIndex::none;
}

}  // namespace cobalt
