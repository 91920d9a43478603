// The insertion modes up to the start of the body.

#include "formats/html/TreeBuilder.h"
#include "formats/html/doctype.h"

namespace intake::html {

void TreeBuilder::initial(Token& token) {
    switch (token.type) {
        case Token::COMMENT:
            return insertComment(token, &page_.document);
        case Token::DOCTYPE:
            quirks_ = asksForQuirks(token);
            insertDoctype(token);
            mode_ = &TreeBuilder::beforeHtml;
            return;
        case Token::TEXT:
            takeLeadingSpace(token);
            if (token.text.empty()) {
                return;
            }
            break;
        default:
            break;
    }
    quirks_ = true;
    reprocess(&TreeBuilder::beforeHtml, token);
}

void TreeBuilder::insertDoctype(const Token& token) {
    Node* const doctype = createNode(NodeType::DOCTYPE);
    doctype->text = token.text;
    auto* const publicId = page_.arena.make<Attribute>();
    auto* const systemId = page_.arena.make<Attribute>();
    publicId->value = token.publicId.value_or("");
    systemId->value = token.systemId.value_or("");
    publicId->next = systemId;
    doctype->attributes = publicId;
    doctype->moveTo(&page_.document);
}

void TreeBuilder::beforeHtml(Token& token) {
    switch (token.type) {
        case Token::COMMENT:
            return insertComment(token, &page_.document);
        case Token::DOCTYPE:
            return;
        case Token::TEXT:
            takeLeadingSpace(token);
            if (token.text.empty()) {
                return;
            }
            break;
        case Token::END_TAG:
            if (!isOneOf(token.tag, Tag::HEAD, Tag::BODY, Tag::HTML, Tag::BR)) {
                return;
            }
            break;
        default:
            break;
    }
    const bool isHtml = token.isStart(Tag::HTML);
    Node* const html = isHtml ? createElement(token.text, token.tag, token.attributes)
                              : createElement(nameOf(Tag::HTML), Tag::HTML, nullptr);
    html->moveTo(&page_.document);
    open(html);
    mode_ = &TreeBuilder::beforeHead;
    if (!isHtml) {
        process(token);
    }
}

void TreeBuilder::beforeHead(Token& token) {
    if (token.type == Token::TEXT) {
        takeLeadingSpace(token);  // which means nothing here
    }
    if (takeSpaceOrComment(token)) {
        return;
    }
    switch (token.type) {
        case Token::START_TAG:
            if (token.tag == Tag::HTML) {
                return inBody(token);
            }
            if (token.tag == Tag::HEAD) {
                head_ = insertElement(token);
                mode_ = &TreeBuilder::inHead;
                return;
            }
            break;
        case Token::END_TAG:
            if (!isOneOf(token.tag, Tag::HEAD, Tag::BODY, Tag::HTML, Tag::BR)) {
                return;
            }
            break;
        default:
            break;
    }
    head_ = insertElement(Tag::HEAD);
    reprocess(&TreeBuilder::inHead, token);
}

void TreeBuilder::inHead(Token& token) {
    if (takeSpaceOrComment(token)) {
        return;
    }
    switch (token.type) {
        case Token::START_TAG:
            if (token.tag == Tag::HEAD || startInHead(token)) {
                return;
            }
            break;
        case Token::END_TAG:
            if (token.tag == Tag::TEMPLATE) {
                return endTemplate();
            }
            if (token.tag == Tag::HEAD) {
                open_.pop();
                mode_ = &TreeBuilder::afterHead;
                return;
            }
            if (!isOneOf(token.tag, Tag::BODY, Tag::HTML, Tag::BR)) {
                return;
            }
            break;
        default:
            break;
    }
    open_.pop();
    reprocess(&TreeBuilder::afterHead, token);
}

/// False for a start tag that ends the head.
bool TreeBuilder::startInHead(Token& token) {
    switch (token.tag) {
        case Tag::HTML:
            inBody(token);
            return true;
        case Tag::BASE:
        case Tag::BASEFONT:
        case Tag::BGSOUND:
        case Tag::LINK:
        case Tag::META:
            insertVoidElement(token);
            return true;
        case Tag::TITLE:
            readTextOf(token, Tokenizer::TextMode::RCDATA);
            return true;
        case Tag::NOFRAMES:
        case Tag::STYLE:
            readTextOf(token, Tokenizer::TextMode::RAWTEXT);
            return true;
        case Tag::SCRIPT:
            readTextOf(token, Tokenizer::TextMode::SCRIPT);
            return true;
        case Tag::NOSCRIPT:
            insertElement(token);
            mode_ = &TreeBuilder::inHeadNoscript;
            return true;
        case Tag::TEMPLATE:
            startTemplate(token);
            return true;
        default:
            return false;
    }
}

void TreeBuilder::startTemplate(const Token& token) {
    insertElement(token);
    formatting_.pushMarker();
    framesetAllowed_ = false;
    mode_ = &TreeBuilder::inTemplate;
    templateModes_.push_back(mode_);
}

void TreeBuilder::endTemplate() {
    if (!open_.isOpen(Tag::TEMPLATE)) {
        return;
    }
    generateAllImpliedEndTags();
    open_.popThrough(Tag::TEMPLATE);
    formatting_.clearToMarker();
    templateModes_.pop_back();
    resetInsertionMode();
}

void TreeBuilder::inHeadNoscript(Token& token) {
    if (takeSpaceOrComment(token)) {
        return;
    }
    switch (token.type) {
        case Token::START_TAG:
            if (isOneOf(token.tag, Tag::HEAD, Tag::NOSCRIPT)) {
                return;
            }
            if (isOneOf(token.tag, Tag::HTML, Tag::BASEFONT, Tag::BGSOUND, Tag::LINK, Tag::META,
                        Tag::NOFRAMES, Tag::STYLE)) {
                startInHead(token);
                return;
            }
            break;
        case Token::END_TAG:
            if (token.tag == Tag::NOSCRIPT) {
                open_.pop();
                mode_ = &TreeBuilder::inHead;
                return;
            }
            if (token.tag != Tag::BR) {
                return;
            }
            break;
        default:
            break;
    }
    open_.pop();
    reprocess(&TreeBuilder::inHead, token);
}

void TreeBuilder::afterHead(Token& token) {
    if (takeSpaceOrComment(token)) {
        return;
    }
    switch (token.type) {
        case Token::START_TAG:
            if (startAfterHead(token)) {
                return;
            }
            break;
        case Token::END_TAG:
            if (token.tag == Tag::TEMPLATE) {
                return endTemplate();
            }
            if (!isOneOf(token.tag, Tag::BODY, Tag::HTML, Tag::BR)) {
                return;
            }
            break;
        default:
            break;
    }
    insertElement(Tag::BODY);
    reprocess(&TreeBuilder::inBody, token);
}

/// False for a start tag that the body begins with.
bool TreeBuilder::startAfterHead(Token& token) {
    if (has(token.tag, METADATA)) {
        open(head_);
        startInHead(token);
        open_.remove(head_);
        return true;
    }
    switch (token.tag) {
        case Tag::HTML:
            inBody(token);
            return true;
        case Tag::HEAD:
            return true;
        case Tag::BODY:
            insertElement(token);
            framesetAllowed_ = false;
            mode_ = &TreeBuilder::inBody;
            return true;
        case Tag::FRAMESET:
            insertElement(token);
            mode_ = &TreeBuilder::inFrameset;
            return true;
        default:
            return false;
    }
}

}  // namespace intake::html
