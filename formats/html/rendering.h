#pragma once

// What of a page is rendered, as far as the page itself says it: style sheets are not looked at.

#include <cstdint>

#include "formats/html/Node.h"

namespace intake::html {

/// Whether a node is rendered where its parent is. Not so are scripts and styles, what stands in
/// place of media (object, canvas, ...), what forms hold (textarea), closed details but for their
/// summary, closed dialogs, all of SVG but its text, what a list of options holds beside them,
/// forms between the parts of a table, and elements with the attribute `hidden` or `popover` or
/// with `display: none` in their own style.
bool isRendered(const Node& node);

enum class Visibility : uint8_t { INHERITED, VISIBLE, HIDDEN };

/// What an element's own style says of `visibility`, which holds for all inside that says no other.
Visibility visibilityOf(const Node& element);

}  // namespace intake::html
