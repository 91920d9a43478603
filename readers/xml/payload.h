#pragma once

// Payload documents: fields that are named by attributes, in a form of their own.

#include <memory>
#include <string>

#include "platform/XmlDocument.h"

namespace intake {

/// Turns a payload document, in which fields are named by attributes, into a plain one, in which
/// every field is an element of that name. Null, and a line in `error`, when no document could be
/// made. Throws PlatformError for a field whose name is missing or impossible, std::length_error
/// beyond 1000 levels.
std::unique_ptr<XmlDocument> KDFToXml(XmlDocument& source, XmlServices& services,
                                      TextEncoding encoding, const EndMark& endMark,
                                      std::string& error);

/// Writes the children of a row of a converted payload document, each as `name=text;` or, with
/// elements below it, as a structure of its own. Throws std::length_error beyond 1000 levels.
void writePayloadRow(XmlDocument& document, XmlDocument::Node row, std::string& script);

}  // namespace intake
