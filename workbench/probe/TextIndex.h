#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "formats/html/Page.h"

namespace probe {

/// Where the texts of a page begin, so that an element of a certain inner text is found without
/// asking each element for its own. Borrows the page.
class TextIndex {
public:
    explicit TextIndex(const intake::html::Page& page);

    /// The elements whose inner text may be this one, in the order of the page; among them are all
    /// whose is. The text is not blank.
    std::vector<const intake::html::Node*> elementsThatMayHave(std::string_view text) const;

private:
    using Node = intake::html::Node;

    std::vector<const Node*> texts_;                                       // that are not blank
    std::map<std::string, std::vector<std::size_t>, std::less<>> byText_;  // positions of them
};

/// The words of a text, with one blank between them.
std::string wordsOf(std::string_view text);

}  // namespace probe
