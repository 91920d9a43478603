#pragma once

#include <string>
#include <string_view>

#include "platform/linux/html/Node.h"

namespace intake::html {

/// Appends the inner text of an element as the HTML standard describes it: white space collapses
/// but in pre and its like, br elements and blocks break the line by "\r\n", cells of a row are
/// separated by tabs, and what is not rendered or not visible is left out. The element itself
/// counts as rendered. Not honoured are style sheets, and in an element's own style all but
/// `display: none` and `visibility`: not `white-space`, `text-transform`, nor any other display.
void appendInnerText(const Node& element, std::string& out);

/// Whether the inner text is this text. Stops at the first difference.
bool innerTextEquals(const Node& element, std::string_view text);

}  // namespace intake::html
