// The steps that several insertion modes share: closing elements, and formatting elements, which
// need not nest.

#include "formats/html/TreeBuilder.h"

namespace intake::html {

namespace {

constexpr size_t NOWHERE = OpenElements::NOWHERE;

}  // namespace

void TreeBuilder::generateImpliedEndTags(Tag except) {
    while (open_.current()->space == Namespace::HTML && has(open_.current()->tag, IMPLIED_END) &&
           open_.current()->tag != except) {
        open_.pop();
    }
}

void TreeBuilder::generateAllImpliedEndTags() {
    while (open_.current()->space == Namespace::HTML &&
           has(open_.current()->tag, IMPLIED_END_THOROUGH)) {
        open_.pop();
    }
}

void TreeBuilder::closeP() {
    if (open_.hasInScope(Tag::P, Scope::BUTTON)) {
        closeThrough(Tag::P);
    }
}

void TreeBuilder::closeThrough(Tag tag) {
    generateImpliedEndTags(tag);
    open_.popThrough(tag);
}

/// Opens again, in the order of their list, the formatting elements that a block has closed.
void TreeBuilder::reconstructFormatting() {
    size_t place = formatting_.size();
    while (place > 0 && !formatting_.isMarker(place - 1) &&
           !open_.contains(formatting_.at(place - 1))) {
        --place;
    }
    for (; place < formatting_.size(); ++place) {
        formatting_.replace(place, insertCopy(*formatting_.at(place)));
    }
}

Node* TreeBuilder::copyOf(const Node& element) {
    return createElement(element.text, element.tag, element.attributes);
}

Node* TreeBuilder::insertCopy(const Node& element) {
    Node* const copy = copyOf(element);
    const InsertionLocation location = insertionLocation();
    copy->moveTo(location.parent, location.before);
    open(copy);
    return copy;
}

/// The standard's adoption agency algorithm, for the end tag of a formatting element.
void TreeBuilder::adoptionAgency(const Token& token) {
    constexpr int MAX_ROUNDS = 8;
    if (open_.current()->isHtml(token.tag) &&
        formatting_.find(open_.current()) == FormattingElements::NOWHERE) {
        open_.pop();
        return;
    }
    for (int round = 0; round < MAX_ROUNDS; ++round) {
        Node* const formatting = formatting_.findLast(token.tag);
        if (formatting == nullptr) {
            return endOther(token);
        }
        const size_t place = open_.find(formatting);
        if (place == NOWHERE) {
            return formatting_.remove(formatting);
        }
        if (!open_.hasInScope(formatting)) {
            return;
        }
        const size_t block = findFurthestBlock(place);
        if (block == NOWHERE) {
            open_.popThrough(formatting);
            return formatting_.remove(formatting);
        }
        moveBlockOutOf(formatting, place, block);
    }
}

/// The outermost special element inside a formatting element.
size_t TreeBuilder::findFurthestBlock(size_t formattingPlace) const {
    for (size_t place = formattingPlace + 1; place < open_.size(); ++place) {
        if (isSpecial(*open_.at(place))) {
            return place;
        }
    }
    return NOWHERE;
}

/// Takes a block out of the formatting element that ends in it, and puts a copy of that element
/// around what the block holds.
void TreeBuilder::moveBlockOutOf(Node* formatting, size_t formattingPlace, size_t blockPlace) {
    constexpr int MAX_COPIES = 3;
    Node* const block = open_.at(blockPlace);
    Node* const ancestor = open_.at(formattingPlace - 1);
    Node* last = block;
    Node* bookmark = nullptr;  // the list's entry that the copy goes behind
    int visited = 0;
    for (size_t place = blockPlace - 1; place > formattingPlace; --place) {
        Node* node = open_.at(place);
        const size_t entry = formatting_.find(node);
        if (++visited > MAX_COPIES || entry == FormattingElements::NOWHERE) {
            formatting_.remove(node);
            open_.remove(node);
            continue;
        }
        node = copyOf(*node);
        formatting_.replace(entry, node);
        open_.replace(place, node);
        bookmark = last == block ? node : bookmark;
        last->moveTo(node);
        last = node;
    }
    const InsertionLocation location = insertionLocation(ancestor);
    last->moveTo(location.parent, location.before);

    Node* const copy = copyOf(*formatting);
    while (block->firstChild != nullptr) {
        block->firstChild->moveTo(copy);
    }
    copy->moveTo(block);
    const size_t entry = formatting_.find(bookmark == nullptr ? formatting : bookmark);
    formatting_.insert(entry + 1, copy);
    formatting_.remove(formatting);
    open_.remove(formatting);
    open_.insert(open_.find(block) + 1, copy);
}

void TreeBuilder::resetInsertionMode() {
    for (size_t place = open_.size(); place > 0; --place) {
        const Node& node = *open_.at(place - 1);
        if (node.space == Namespace::HTML) {
            mode_ = modeBehind(node.tag);
            if (mode_ != nullptr) {
                return;
            }
        }
    }
    mode_ = &TreeBuilder::inBody;
}

/// The mode that an open element says, if any.
TreeBuilder::Mode TreeBuilder::modeBehind(Tag tag) const {
    switch (tag) {
        case Tag::TD:
        case Tag::TH:
            return &TreeBuilder::inCell;
        case Tag::TR:
            return &TreeBuilder::inRow;
        case Tag::TBODY:
        case Tag::THEAD:
        case Tag::TFOOT:
            return &TreeBuilder::inTableBody;
        case Tag::CAPTION:
            return &TreeBuilder::inCaption;
        case Tag::COLGROUP:
            return &TreeBuilder::inColumnGroup;
        case Tag::TABLE:
            return &TreeBuilder::inTable;
        case Tag::TEMPLATE:
            return templateModes_.back();
        case Tag::HEAD:
            return &TreeBuilder::inHead;
        case Tag::BODY:
            return &TreeBuilder::inBody;
        case Tag::FRAMESET:
            return &TreeBuilder::inFrameset;
        case Tag::HTML:
            return head_ == nullptr ? &TreeBuilder::beforeHead : &TreeBuilder::afterHead;
        default:
            return nullptr;
    }
}

}  // namespace intake::html
