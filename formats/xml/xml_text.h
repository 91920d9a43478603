#pragma once

#include <libxml/tree.h>

#include <string>
#include <string_view>

namespace intake {

inline std::string_view viewOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

/// A text node that is marked keeps the white space at its ends when its text is taken.
inline void keepSpace(xmlNode* text) {
    text->_private = text;
}
inline bool keepsSpace(const xmlNode* text) {
    return text->_private != nullptr;
}

/// Appends the qualified name, or the fixed name of a node that has none, in UTF-8.
void appendNodeName(const xmlNode* node, std::string& out);

/// Appends the text of a node and all below it, trimmed, in UTF-8. Does not recurse.
void appendNodeText(const xmlNode* node, std::string& out);

}  // namespace intake
