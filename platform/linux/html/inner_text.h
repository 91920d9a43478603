#pragma once

#include <string>
#include <string_view>

#include "platform/linux/html/Node.h"

namespace intake::html {

/// Appends the inner text of an element as the HTML standard describes it: white space collapses,
/// br elements and blocks break the line by "\r\n", cells of a row are separated by tabs, and what
/// is not rendered is left out: scripts and styles, elements with the attribute `hidden` or with
/// `display: none` in their own style. Style sheets are not looked at. The element itself counts as
/// rendered.
void appendInnerText(const Node& element, std::string& out);

/// Whether the inner text is this text. Stops at the first difference.
bool innerTextEquals(const Node& element, std::string_view text);

}  // namespace intake::html
