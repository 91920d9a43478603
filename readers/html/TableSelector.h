#pragma once

#include <cstdint>
#include <string>

#include "platform/HtmlDocument.h"

namespace intake {

/// Says which table of a page is meant: a kind word (ID, CLASS, any other for a text search) and
/// the text behind it; without either it is the page's first table.
class TableSelector {
public:
    /// Takes the first line of `selector`, which is in the request's encoding.
    TableSelector(const std::string& selector, int32_t encoding);

    /// The TABLE element; null when there is none.
    HtmlDocument::Element find(HtmlDocument& document) const;

    /// Says that there was none, in the request's encoding.
    std::string notFoundMessage() const;

private:
    HtmlDocument::Element findById(HtmlDocument& document) const;
    HtmlDocument::Element findByClass(HtmlDocument& document) const;
    HtmlDocument::Element findByText(HtmlDocument& document) const;

    std::string kind_;
    std::string text_;
    std::string utf8Text_;
};

}  // namespace intake
