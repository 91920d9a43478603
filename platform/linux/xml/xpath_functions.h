#pragma once

#include <libxml/xpath.h>

namespace intake {

// What unions and double slashes within a path are rewritten to.
constexpr const char* UNION_FUNCTION = "_union";
constexpr const char* DESCENDANTS_FUNCTION = "_descendants";

/// Makes the functions known to a context: `_union` gives the nodes of all its arguments,
/// `_descendants` those of its only argument and all below them, each node once.
void registerXPathFunctions(xmlXPathContext& context);

}  // namespace intake
