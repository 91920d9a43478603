// Foreign content: SVG and MathML.

#include "formats/html/TreeBuilder.h"
#include "formats/html/characters.h"
#include "formats/html/foreign_names.h"

namespace intake::html {

void TreeBuilder::inForeignContent(Token& token) {
    switch (token.type) {
        case Token::TEXT:
            return textInForeign(token);
        case Token::COMMENT:
            return insertComment(token);
        case Token::START_TAG:
            return startForeign(token);
        case Token::END_TAG:
            return endForeign(token);
        default:
            return;
    }
}

void TreeBuilder::textInForeign(const Token& token) {
    insertText(withReplacedNulls(token.text, page_.arena));
    for (const char c : token.text) {
        framesetAllowed_ = framesetAllowed_ && (isSpace(c) || c == '\0');
    }
}

bool TreeBuilder::breaksOut(const Token& token) {
    if (token.tag != Tag::FONT) {
        return has(token.tag, BREAKOUT);
    }
    for (const Attribute* each = token.attributes; each != nullptr; each = each->next) {
        if (each->name == "color" || each->name == "face" || each->name == "size") {
            return true;
        }
    }
    return false;
}

void TreeBuilder::startForeign(Token& token) {
    if (breaksOut(token)) {
        return leaveForeignContent(token);
    }
    const Namespace space = open_.current()->space;
    adjustForeignNames(token, space);
    insertElement(token, space);
    if (token.selfClosing) {
        open_.pop();
    }
}

/// Foreign elements end where HTML begins.
void TreeBuilder::leaveForeignContent(Token& token) {
    do {
        open_.pop();
    } while (!isHtmlParent(*open_.current()));
    (this->*mode_)(token);
}

void TreeBuilder::startForeignRoot(Token& token, Namespace space) {
    reconstructFormatting();
    adjustForeignNames(token, space);
    insertElement(token, space);
    if (token.selfClosing) {
        open_.pop();
    }
}

void TreeBuilder::endForeign(Token& token) {
    if (isOneOf(token.tag, Tag::BR, Tag::P)) {
        return leaveForeignContent(token);
    }
    for (size_t place = open_.size() - 1; place > 0; --place) {
        const Node* const node = open_.at(place);
        if (node->space == Namespace::HTML) {
            break;
        }
        if (equalIgnoringCase(node->text, token.text)) {
            return open_.popThrough(node);
        }
    }
    (this->*mode_)(token);
}

}  // namespace intake::html
