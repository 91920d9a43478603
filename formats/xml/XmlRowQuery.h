#pragma once

#include <cstdint>
#include <optional>

#include "formats/xml/PlainPath.h"

namespace intake {

/// The rows that are wanted of a document, by plain paths.
struct XmlRowQuery {
    PlainPath path;
    std::optional<PlainPath> key;  // to be found from each row
    bool needsMarkup = false;
    int64_t first = 0;  // rows from here up to `end` are told
    int64_t end = 0;
};

}  // namespace intake
