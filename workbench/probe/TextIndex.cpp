#include "workbench/probe/TextIndex.h"

#include <algorithm>
#include <unordered_set>

namespace probe {

namespace {

using intake::html::Node;
using intake::html::NodeType;

constexpr std::string_view whiteSpace = " \t\r\n\f";

}  // namespace

std::string wordsOf(std::string_view text) {
    std::string words;
    for (auto start = text.find_first_not_of(whiteSpace); start != std::string_view::npos;
         start = text.find_first_not_of(whiteSpace)) {
        text.remove_prefix(start);
        const auto end = std::min(text.find_first_of(whiteSpace), text.size());
        words += (words.empty() ? "" : " ") + std::string(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

TextIndex::TextIndex(const intake::html::Page& page) {
    constexpr std::size_t longest = 2000;  // bytes, by which it is known; no selector is as long
    for (const Node* node = page.document.following(&page.document); node != nullptr;
         node = node->following(&page.document)) {
        if (node->type != NodeType::TEXT) continue;
        const auto start = node->text.find_first_not_of(whiteSpace);
        if (start == std::string_view::npos) continue;
        std::string words = wordsOf(node->text.substr(start, longest));
        byText_[std::move(words)].push_back(texts_.size());
        texts_.push_back(node);
    }
}

/// The first text within such an element is a text that the wanted one begins with.
std::vector<const Node*> TextIndex::elementsThatMayHave(std::string_view text) const {
    const std::string words = wordsOf(text);
    std::vector<std::size_t> positions;
    for (std::size_t length = 1; length <= words.size(); ++length) {
        const auto known = byText_.find(std::string_view(words).substr(0, length));
        if (known != byText_.end())
            positions.insert(positions.end(), known->second.begin(), known->second.end());
    }
    std::sort(positions.begin(), positions.end());
    std::vector<const Node*> elements;
    std::unordered_set<const Node*> seen;
    for (const std::size_t position : positions) {
        const auto first = static_cast<std::ptrdiff_t>(elements.size());
        for (const Node* node = texts_[position]->parent;
             node != nullptr && node->type == NodeType::ELEMENT && seen.insert(node).second;
             node = node->parent)
            elements.push_back(node);
        std::reverse(elements.begin() + first, elements.end());
    }
    return elements;
}

}  // namespace probe
