#pragma once

#include <string>

#include "formats/html/Page.h"

namespace intake::html {

/// A page's tree in the notation of html5lib's tests.
std::string dumpTree(const Page& page);

}  // namespace intake::html
