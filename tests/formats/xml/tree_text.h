#pragma once

#include <libxml/tree.h>

#include <string>

namespace intake {

/// All of a tree: its nodes with their namespaces, declarations, attributes and marks. Does not
/// recurse.
std::string treeText(const xmlDoc* document);

/// Takes all attributes out of a tree that lies in an arena.
void removeAttributes(xmlDoc* document);

}  // namespace intake
