#pragma once

#include <string>

#include "platform/XmlDocument.h"

namespace intake {

/// Writes the children of a row of a converted payload document, each as `name=text;` or, with
/// elements below it, as a structure of its own. Throws std::length_error beyond 1000 levels.
void writePayloadRow(XmlDocument& document, XmlDocument::Node row, std::string& script);

}  // namespace intake
