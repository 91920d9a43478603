#pragma once

#include <cstddef>

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// Takes the entries of an outline in order, and keeps the page of them that is wished for.
class OutlinePage {
public:
    explicit OutlinePage(const OutlineWish& wish) : from_(wish.from), most_(wish.most) {}

    /// Whether the next entry will be on the page.
    bool wantsNext() const { return met_ >= from_ && !isFull(); }
    bool isFull() const { return outline_.entries.size() == most_; }

    /// Whether there is an entry behind the page.
    bool isPassed() const { return isFull() && met_ > from_ + most_; }

    void add(OutlineEntry entry);

    /// So many entries that are not on the page.
    void pass(std::size_t count) { met_ += count; }

    /// The page of all the entries that there are.
    Outline take();

    /// The page, when nobody looked whether there are more entries than were met.
    Outline takeUncounted();

private:
    const std::size_t from_;
    const std::size_t most_;
    std::size_t met_ = 0;
    Outline outline_;
};

}  // namespace probe
