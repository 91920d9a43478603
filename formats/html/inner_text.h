#pragma once

#include <cstdint>
#include <string>

#include "formats/html/Node.h"

namespace intake::html {

/// Appends the inner text of an element as the HTML standard describes it: white space collapses
/// but in pre and its like, br elements and blocks break the line by "\r\n", cells of a row are
/// separated by tabs, and what is not rendered or not visible is left out. The element itself
/// counts as rendered. Not honoured are style sheets, and in an element's own style all but
/// `display: none` and `visibility`: not `white-space`, `text-transform`, nor any other display.
void appendInnerText(const Node& element, std::string& out);

/// A text that many elements of a page are compared with.
struct SearchedText {
    std::string text;
    uint32_t number = 0;  // another for another text of the same page; not 0
};

/// Whether the inner text is this text. Stops at the first difference. Notes in other nodes, which
/// it meets on the way, that theirs is not, so that asking for all elements in document order walks
/// along no part of the page more often than the text has words.
bool innerTextEquals(const Node& element, const SearchedText& text);

}  // namespace intake::html
