#pragma once

#include <libxml/tree.h>

#include <string>

namespace intake {

/// Appends a node as it would stand in a document of its own, in UTF-8: a prefix whose declaration
/// lies outside is declared where it is first used. Does not recurse.
void appendNodeMarkup(const xmlNode* node, std::string& out);

}  // namespace intake
