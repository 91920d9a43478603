// The insertion modes of templates and framesets, and behind the body.

#include "formats/html/TreeBuilder.h"
#include "formats/html/characters.h"

namespace intake::html {

void TreeBuilder::inTemplate(Token& token) {
    if (token.type == Token::END) {
        if (open_.isOpen(Tag::TEMPLATE)) {
            open_.popThrough(Tag::TEMPLATE);
            formatting_.clearToMarker();
            templateModes_.pop_back();
            resetInsertionMode();
            process(token);
        }
        return;
    }
    if (token.isEnd(Tag::TEMPLATE)) {
        return endTemplate();
    }
    if (token.type == Token::END_TAG) {
        return;
    }
    if (token.type != Token::START_TAG) {
        return inBody(token);
    }
    if (has(token.tag, METADATA)) {
        startInHead(token);
        return;
    }
    templateModes_.back() = modeInTemplate(token.tag);
    reprocess(templateModes_.back(), token);
}

/// The mode for what a template begins with.
TreeBuilder::Mode TreeBuilder::modeInTemplate(Tag tag) {
    switch (tag) {
        case Tag::CAPTION:
        case Tag::COLGROUP:
        case Tag::TBODY:
        case Tag::TFOOT:
        case Tag::THEAD:
            return &TreeBuilder::inTable;
        case Tag::COL:
            return &TreeBuilder::inColumnGroup;
        case Tag::TR:
            return &TreeBuilder::inTableBody;
        case Tag::TD:
        case Tag::TH:
            return &TreeBuilder::inRow;
        default:
            return &TreeBuilder::inBody;
    }
}

/// What may stand behind the body: comments, and white space, which is the body's. True when that
/// was all of the token.
bool TreeBuilder::takeBehindBody(Token& token, Node* commentParent) {
    switch (token.type) {
        case Token::COMMENT:
            insertComment(token, commentParent);
            return true;
        case Token::DOCTYPE:
        case Token::END:
            return true;
        case Token::TEXT:
            spaceInBody(takeLeadingSpace(token));
            return token.text.empty();
        default:
            return false;
    }
}

void TreeBuilder::spaceInBody(std::string_view space) {
    if (!space.empty()) {
        Token token;
        token.type = Token::TEXT;
        token.text = space;
        inBody(token);
    }
}

void TreeBuilder::afterBody(Token& token) {
    if (takeBehindBody(token, open_.at(0))) {
        return;
    }
    if (token.isStart(Tag::HTML)) {
        return inBody(token);
    }
    if (token.isEnd(Tag::HTML)) {
        mode_ = &TreeBuilder::afterAfterBody;
        return;
    }
    reprocess(&TreeBuilder::inBody, token);
}

/// What is treated alike in framesets and behind them; false for all else.
bool TreeBuilder::takeAmongFramesets(Token& token) {
    if (token.type == Token::TEXT) {
        insertText(onlySpaces(token.text));
    } else if (token.type == Token::COMMENT) {
        insertComment(token);
    } else if (token.isStart(Tag::HTML)) {
        inBody(token);
    } else {
        return false;
    }
    return true;
}

void TreeBuilder::inFrameset(Token& token) {
    if (takeAmongFramesets(token)) {
        return;
    }
    if (token.isStart(Tag::FRAMESET)) {
        insertElement(token);
    } else if (token.isStart(Tag::FRAME)) {
        insertVoidElement(token);
    } else if (token.isStart(Tag::NOFRAMES)) {
        startInHead(token);
    } else if (token.isEnd(Tag::FRAMESET) && open_.size() > 1) {
        open_.pop();
        if (!open_.current()->isHtml(Tag::FRAMESET)) {
            mode_ = &TreeBuilder::afterFrameset;
        }
    }
}

void TreeBuilder::afterFrameset(Token& token) {
    if (takeAmongFramesets(token)) {
        return;
    }
    if (token.isEnd(Tag::HTML)) {
        mode_ = &TreeBuilder::afterAfterFrameset;
    } else if (token.isStart(Tag::NOFRAMES)) {
        startInHead(token);
    }
}

void TreeBuilder::afterAfterBody(Token& token) {
    if (takeBehindBody(token, &page_.document)) {
        return;
    }
    if (token.isStart(Tag::HTML)) {
        return inBody(token);
    }
    reprocess(&TreeBuilder::inBody, token);
}

void TreeBuilder::afterAfterFrameset(Token& token) {
    if (token.type == Token::COMMENT) {
        insertComment(token, &page_.document);
    } else if (token.type == Token::TEXT) {
        spaceInBody(onlySpaces(token.text));
    } else if (token.isStart(Tag::HTML)) {
        inBody(token);
    } else if (token.isStart(Tag::NOFRAMES)) {
        startInHead(token);
    }
}

}  // namespace intake::html
