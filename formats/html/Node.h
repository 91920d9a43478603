#pragma once

#include <cstdint>
#include <string_view>

#include "formats/html/tags.h"

namespace intake::html {

enum class NodeType : uint8_t { DOCUMENT, DOCTYPE, ELEMENT, TEXT, COMMENT };
enum class Namespace : uint8_t { HTML, SVG, MATHML };

/// One of a list, in the order of the source.
struct Attribute {
    std::string_view name, value;
    Attribute* next = nullptr;
};

/// A node of a page. Lives in the page's arena, and so do its texts, or in the page's own bytes.
/// Text nodes that stand side by side make one text together.
struct Node {
    Node* parent = nullptr;
    Node* previous = nullptr;
    Node* next = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
    Node* content = nullptr;  // of a template: a node that holds what is inside; not in the page

    std::string_view text;            // of a text or comment; the name of an element or doctype
    Attribute* attributes = nullptr;  // of a doctype: its public and system identifier

    Tag tag = Tag::OTHER;  // of HTML elements, and of foreign ones by the same name
    NodeType type = NodeType::ELEMENT;
    Namespace space = Namespace::HTML;

    // While the tree is built: whether the node is in the lists of those names.
    bool isOpen : 1 = false;
    bool isFormatting : 1 = false;

    /// Of inner texts: what holds for text inside of this element, once that has been asked for;
    /// see inner_text.cpp.
    mutable bool isInheritanceKnown : 1 = false;
    mutable bool keepsSpaceInside : 1 = false;
    mutable bool isVisibleInside : 1 = true;

    /// Of a search by inner text: the SearchedText::number from which this element's text is known
    /// to differ; see inner_text.h.
    mutable uint32_t textKnownToDiffer = 0;

    bool isHtml(Tag which) const { return tag == which && space == Namespace::HTML; }

    /// The value of an attribute; null when it has none of that name.
    const std::string_view* attribute(std::string_view name) const;

    /// Takes the node out of where it is, if anywhere, and puts it before a child of `newParent`,
    /// or behind all where that is null.
    void moveTo(Node* newParent, Node* before = nullptr);
    void remove();

    /// The node behind this one in document order, below `root`; null at the end.
    const Node* following(const Node* root) const;
    /// The same without what is below this one.
    const Node* followingOutside(const Node* root) const;
};

}  // namespace intake::html
