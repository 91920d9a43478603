// The end tags of the insertion mode "in body".

#include <utility>

#include "formats/html/TreeBuilder.h"

namespace intake::html {

void TreeBuilder::endInBody(Token& token) {
    if (endBlock(token)) {
        return;
    }
    if (has(token.tag, FORMATTING)) {
        return adoptionAgency(token);
    }
    if (token.tag == Tag::TEMPLATE) {
        return endTemplate();
    }
    endOther(token);
}

/// Closes the innermost element of a tag with all that is open inside. False when none is in scope.
bool TreeBuilder::closeInScope(Tag tag) {
    if (!open_.hasInScope(tag)) {
        return false;
    }
    generateImpliedEndTags();
    open_.popThrough(tag);
    return true;
}

bool TreeBuilder::endBlock(Token& token) {
    if (has(token.tag, CONTAINER) ||
        isOneOf(token.tag, Tag::BUTTON, Tag::LISTING, Tag::PRE, Tag::SELECT)) {
        closeInScope(token.tag);
        return true;
    }
    if (has(token.tag, HEADING)) {
        endHeading();
        return true;
    }
    switch (token.tag) {
        case Tag::BODY:
        case Tag::HTML:
            if (open_.hasInScope(Tag::BODY)) {
                mode_ = &TreeBuilder::afterBody;
                if (token.tag == Tag::HTML) {
                    process(token);
                }
            }
            return true;
        case Tag::DD:
        case Tag::DT:
            if (open_.hasInScope(token.tag)) {
                closeThrough(token.tag);
            }
            return true;
        case Tag::LI:
            if (open_.hasInScope(Tag::LI, Scope::LIST_ITEM)) {
                closeThrough(Tag::LI);
            }
            return true;
        case Tag::P:
            if (!open_.hasInScope(Tag::P, Scope::BUTTON)) {
                insertElement(Tag::P);
            }
            closeThrough(Tag::P);
            return true;
        case Tag::APPLET:
        case Tag::MARQUEE:
        case Tag::OBJECT:
            if (closeInScope(token.tag)) {
                formatting_.clearToMarker();
            }
            return true;
        case Tag::BR:
            token.type = Token::START_TAG;
            token.attributes = nullptr;
            startInBody(token);
            return true;
        case Tag::FORM:
            endForm();
            return true;
        default:
            return false;
    }
}

void TreeBuilder::endForm() {
    if (open_.isOpen(Tag::TEMPLATE)) {
        closeInScope(Tag::FORM);
        return;
    }
    Node* const form = std::exchange(form_, nullptr);
    if (form != nullptr && open_.hasInScope(form)) {
        generateImpliedEndTags();
        open_.remove(form);
    }
}

void TreeBuilder::endHeading() {
    if (!open_.hasHeadingInScope()) {
        return;
    }
    generateImpliedEndTags();
    bool isHeading = false;
    while (!isHeading) {
        isHeading = has(open_.current()->tag, HEADING) && open_.current()->space == Namespace::HTML;
        open_.pop();
    }
}

void TreeBuilder::endOther(const Token& token) {
    if (!open_.isOpen(token.tag)) {
        return;
    }
    for (size_t place = open_.size(); place > 0; --place) {
        Node* const node = open_.at(place - 1);
        if (node->isHtml(token.tag) && node->text == token.text) {
            generateImpliedEndTags(token.tag);
            open_.popThrough(node);
            return;
        }
        if (isSpecial(*node)) {
            return;
        }
    }
}

}  // namespace intake::html
