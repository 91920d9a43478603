#pragma once

#include <libxml/xpath.h>

namespace intake {

/// Makes the functions of rewritten expressions known to a context: UNION_FUNCTION gives the nodes
/// of all its arguments, DESCENDANTS_FUNCTION those of its only argument and all below them,
/// PARENTS_FUNCTION those of the latter that have children; each node once.
void registerXPathFunctions(xmlXPathContext& context);

}  // namespace intake
