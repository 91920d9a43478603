#include "formats/html/inner_text.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "formats/html/characters.h"
#include "formats/html/rendering.h"

namespace intake::html {

namespace {

constexpr std::string_view LINE_END = "\r\n";

/// Takes the text by appending it. Like the other one, says whether to go on.
class Appending {
public:
    explicit Appending(std::string& out) : out_(out) {}

    bool put(std::string_view piece) {
        out_.append(piece);
        return true;
    }
    void enter(const Node&) {}
    void leave(const Node&) {}

private:
    std::string& out_;
};

/// Takes the text by comparing it with an expected one. An element whose text begins where that of
/// the root begins can equal the expected text only if it ends where that has come whole; any other
/// is marked as different, so that a later search does not walk through it again.
class Comparing {
public:
    explicit Comparing(const SearchedText& expected)
        : rest_(expected.text), number_(expected.number) {}

    bool put(std::string_view piece) {
        hasText_ = true;
        isEqual_ = isEqual_ && rest_.starts_with(piece);
        rest_.remove_prefix(isEqual_ ? piece.size() : 0);
        return isEqual_;
    }

    void enter(const Node& element) {
        if (!hasText_) {
            element.textKnownToDiffer = number_;
        }
    }
    void leave(const Node& element) {
        if (isEqual()) {
            element.textKnownToDiffer = 0;
        }
    }

    bool isEqual() const { return isEqual_ && rest_.empty(); }

private:
    std::string_view rest_;
    const uint32_t number_;
    bool hasText_ = false;
    bool isEqual_ = true;
};

bool keepsSpace(const Node& element) {
    return isOneOf(element.tag, Tag::PRE, Tag::LISTING, Tag::PLAINTEXT, Tag::XMP, Tag::TEXTAREA);
}

/// Notes what an element inherits to all inside, in itself and in those around it: a table asks for
/// it with every cell, and a search with every element of the page.
void findInheritance(const Node& element) {
    std::vector<const Node*> unknown;
    const Node* each = &element;
    for (; each != nullptr && !each->isInheritanceKnown; each = each->parent) {
        unknown.push_back(each);
    }
    for (; !unknown.empty(); unknown.pop_back()) {
        const Node& node = *unknown.back();
        const Visibility visibility = visibilityOf(node);
        const bool isInherited = visibility == Visibility::INHERITED;
        node.keepsSpaceInside = keepsSpace(node) || (each != nullptr && each->keepsSpaceInside);
        node.isVisibleInside = isInherited ? each == nullptr || each->isVisibleInside
                                           : visibility == Visibility::VISIBLE;
        node.isInheritanceKnown = true;
        each = &node;
    }
}

bool isCell(const Node& node) {
    return node.isHtml(Tag::TD) || node.isHtml(Tag::TH);
}

/// The next sibling that meets a condition; null when there is none.
template <class Condition>
const Node* nextSibling(const Node& node, Condition condition) {
    const Node* next = node.next;
    while (next != nullptr && !condition(*next)) {
        next = next->next;
    }
    return next;
}

bool isLastRow(const Node& row) {
    const auto isRow = [](const Node& node) { return node.isHtml(Tag::TR); };
    const auto hasRow = [isRow](const Node& node) {
        const Node* const first = node.firstChild;
        return isRow(node) || (first != nullptr && has(node.tag, TABLE_PART) &&
                               (isRow(*first) || nextSibling(*first, isRow) != nullptr));
    };
    return nextSibling(row, isRow) == nullptr &&
           (row.parent == nullptr || row.parent->isHtml(Tag::TABLE) ||
            nextSibling(*row.parent, hasRow) == nullptr);
}

template <class Sink>
class InnerText {
public:
    explicit InnerText(Sink& sink) : sink_(sink) {}

    /// Walks without recursion: pages may be deep. False when the sink had enough.
    bool walk(const Node& root) {
        inherit(root.parent);
        enter(root);
        const Node* node = root.firstChild;
        while (node != nullptr) {
            if (!isRendered(*node)) {
                // neither the node nor what is inside
            } else if (node->type == NodeType::TEXT) {
                if (!text(node->text)) {
                    return false;
                }
            } else {
                enter(*node);
                if (node->isHtml(Tag::BR) && isVisible_ && !lineBreak()) {
                    return false;
                }
                if (node->firstChild != nullptr) {
                    node = node->firstChild;
                    continue;
                }
                if (!leave(*node)) {
                    return false;
                }
            }
            while (node != &root && node->next == nullptr) {
                node = node->parent;
                if (node != &root && !leave(*node)) {
                    return false;
                }
            }
            node = node == &root ? nullptr : node->next;
        }
        return true;
    }

private:
    /// Takes over what elements around the root say of it.
    void inherit(const Node* parent) {
        if (parent != nullptr) {
            findInheritance(*parent);
            preserving_ = parent->keepsSpaceInside ? 1 : 0;
            isVisible_ = parent->isVisibleInside;
        }
    }

    void enter(const Node& element) {
        sink_.enter(element);
        preserving_ += keepsSpace(element) ? 1 : 0;
        const Visibility visibility = visibilityOf(element);
        if (visibility == (isVisible_ ? Visibility::HIDDEN : Visibility::VISIBLE)) {
            isVisible_ = !isVisible_;
            visibilityChanges_.push_back(&element);
        }
        requireBreaks(element);
    }

    bool leave(const Node& element) {
        sink_.leave(element);
        preserving_ -= keepsSpace(element) ? 1 : 0;
        requireBreaks(element);
        const bool goesOn = !isVisible_ || endCellOrRow(element);
        if (!visibilityChanges_.empty() && visibilityChanges_.back() == &element) {
            isVisible_ = !isVisible_;
            visibilityChanges_.pop_back();
        }
        return goesOn;
    }

    bool endCellOrRow(const Node& element) {
        if (isCell(element)) {
            isLineStart_ = true;
            isSpacePending_ = false;
            return nextSibling(element, isCell) == nullptr || separator("\t");
        }
        return !element.isHtml(Tag::TR) || isLastRow(element) || lineBreak();
    }

    /// Blocks stand on lines of their own, paragraphs with an empty one between.
    void requireBreaks(const Node& element) {
        if (isVisible_ && element.space == Namespace::HTML && has(element.tag, BLOCK)) {
            breaksPending_ = std::max(breaksPending_, element.tag == Tag::P ? 2 : 1);
            isLineStart_ = true;
            isSpacePending_ = false;
        }
    }

    bool text(std::string_view text) {
        if (!isVisible_) {
            return true;
        }
        if (preserving_ > 0) {
            return preserved(text);
        }
        while (!text.empty()) {
            const size_t start = std::min(text.find_first_not_of(WHITE_SPACE), text.size());
            isSpacePending_ = isSpacePending_ || (start > 0 && !isLineStart_);
            text.remove_prefix(start);
            const std::string_view word = text.substr(0, text.find_first_of(WHITE_SPACE));
            if (!word.empty() && !put(word)) {
                return false;
            }
            text.remove_prefix(word.size());
        }
        return true;
    }

    bool preserved(std::string_view text) {
        while (!text.empty()) {
            const std::string_view line = text.substr(0, text.find('\n'));
            if (!line.empty() && !put(line)) {
                return false;
            }
            text.remove_prefix(line.size());
            if (!text.empty()) {
                if (!lineBreak()) {
                    return false;
                }
                text.remove_prefix(1);
            }
        }
        return true;
    }

    bool lineBreak() { return separator(LINE_END); }

    /// Writes what ends a line, or a cell.
    bool separator(std::string_view text) {
        isSpacePending_ = false;
        const bool goesOn = put(text);
        isLineStart_ = true;
        return goesOn;
    }

    bool put(std::string_view piece) {
        for (; breaksPending_ > 0 && !isEmpty_; --breaksPending_) {
            if (!sink_.put(LINE_END)) {
                return false;
            }
        }
        breaksPending_ = 0;
        isEmpty_ = false;
        isLineStart_ = false;
        return (!std::exchange(isSpacePending_, false) || sink_.put(" ")) && sink_.put(piece);
    }

    Sink& sink_;
    int preserving_ = 0;
    bool isVisible_ = true;
    std::vector<const Node*> visibilityChanges_;  // the entered elements that flipped it
    int breaksPending_ = 0;
    bool isSpacePending_ = false;
    bool isLineStart_ = true;
    bool isEmpty_ = true;
};

}  // namespace

void appendInnerText(const Node& element, std::string& out) {
    Appending sink(out);
    InnerText<Appending>(sink).walk(element);
}

bool innerTextEquals(const Node& element, const SearchedText& text) {
    if (element.firstChild == nullptr || element.textKnownToDiffer == text.number) {
        return element.firstChild == nullptr && text.text.empty();
    }
    Comparing sink(text);
    InnerText<Comparing>(sink).walk(element);
    sink.leave(element);
    return sink.isEqual();
}

}  // namespace intake::html
