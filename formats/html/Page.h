#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "formats/html/Arena.h"
#include "formats/html/Node.h"
#include "formats/source/EndMark.h"

namespace intake::html {

/// A parsed page: its bytes, and the nodes that point into them. Does not move.
struct Page {
    std::string bytes;  // in UTF-8, with line feeds only
    Arena arena;
    Node document;
};

/// Parses a page in UTF-8 by the tree construction rules of the HTML standard, with scripting
/// disabled. Throws PageError for a page that is nested deeper than 2000 elements or, if it is
/// long, very deep throughout; for one that becomes more nodes than it has bytes, or takes more
/// than `maxTreeBytes` of memory; GivenUp when `endMark` is set meanwhile.
std::unique_ptr<Page> parsePage(std::string bytes, const EndMark& endMark,
                                size_t maxTreeBytes = 1'000'000'000);

}  // namespace intake::html
