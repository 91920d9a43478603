#pragma once

#include <libxml/tree.h>

#include <string>

namespace intake {

/// A node and all below it, one a line: what it is, its name with its namespace, its text.
std::string dumpXml(const xmlNode* root);

}  // namespace intake
