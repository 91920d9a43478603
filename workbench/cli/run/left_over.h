#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "workbench/cobalt/Store.h"

namespace workbench {

/// What older loads of a writer left in the store: fields, and entries of fields.
struct LeftOver {
    std::size_t count = 0;
    std::uint32_t oldest = 0;  // the moment that the oldest of it was written
};

/// For each writer what it left there before its last load, whose moment is `lastMoments[writer]`.
std::vector<LeftOver> countLeftOver(const cobalt::Store& store,
                                    std::span<const std::uint32_t> lastMoments);

/// The names of the first few of it: "Top[1], Top[2] and 17 more".
std::string namesOfLeftOver(const cobalt::Store& store, cobalt::Origin last);

/// The same as a sentence; empty when nothing is left.
std::string sentenceOfLeftOver(const cobalt::Store& store, cobalt::Origin last);

}  // namespace workbench
