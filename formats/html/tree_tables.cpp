// The insertion modes of tables.

#include "formats/html/TreeBuilder.h"
#include "formats/html/characters.h"

namespace intake::html {

template <class... Tags>
void TreeBuilder::clearStackBackTo(Tags... tags) {
    while (open_.current()->space != Namespace::HTML ||
           !isOneOf(open_.current()->tag, tags..., Tag::TEMPLATE, Tag::HTML)) {
        open_.pop();
    }
}

void TreeBuilder::inBodyWithFosterParenting(Token& token) {
    fosterParenting_ = true;
    inBody(token);
    fosterParenting_ = false;
}

void TreeBuilder::inTable(Token& token) {
    switch (token.type) {
        case Token::TEXT:
            return textInTable(token);
        case Token::COMMENT:
            return insertComment(token);
        case Token::DOCTYPE:
            return;
        case Token::START_TAG:
            if (startInTable(token)) {
                return;
            }
            break;
        case Token::END_TAG:
            if (endInTable(token)) {
                return;
            }
            break;
        case Token::END:
            return inBody(token);
    }
    inBodyWithFosterParenting(token);
}

void TreeBuilder::textInTable(Token& token) {
    const Node& current = *open_.current();
    if (current.space != Namespace::HTML ||
        !(has(current.tag, TABLE_PART) || current.tag == Tag::TEMPLATE)) {
        return inBodyWithFosterParenting(token);
    }
    tableText_.clear();
    originalMode_ = mode_;
    reprocess(&TreeBuilder::inTableText, token);
}

bool TreeBuilder::startInTable(Token& token) {
    switch (token.tag) {
        case Tag::CAPTION:
            clearStackBackTo(Tag::TABLE);
            formatting_.pushMarker();
            insertElement(token);
            mode_ = &TreeBuilder::inCaption;
            return true;
        case Tag::COLGROUP:
            clearStackBackTo(Tag::TABLE);
            insertElement(token);
            mode_ = &TreeBuilder::inColumnGroup;
            return true;
        case Tag::COL:
            clearStackBackTo(Tag::TABLE);
            insertElement(Tag::COLGROUP);
            reprocess(&TreeBuilder::inColumnGroup, token);
            return true;
        case Tag::TBODY:
        case Tag::TFOOT:
        case Tag::THEAD:
            clearStackBackTo(Tag::TABLE);
            insertElement(token);
            mode_ = &TreeBuilder::inTableBody;
            return true;
        case Tag::TD:
        case Tag::TH:
        case Tag::TR:
            clearStackBackTo(Tag::TABLE);
            insertElement(Tag::TBODY);
            reprocess(&TreeBuilder::inTableBody, token);
            return true;
        case Tag::TABLE:
            if (open_.hasInScope(Tag::TABLE, Scope::TABLE)) {
                open_.popThrough(Tag::TABLE);
                resetInsertionMode();
                process(token);
            }
            return true;
        case Tag::STYLE:
        case Tag::SCRIPT:
        case Tag::TEMPLATE:
            return startInHead(token);
        case Tag::INPUT:
            if (!isHiddenInput(token)) {
                return false;
            }
            insertVoidElement(token);
            return true;
        case Tag::FORM:
            if (form_ == nullptr && !open_.isOpen(Tag::TEMPLATE)) {
                form_ = insertElement(token);
                open_.pop();
            }
            return true;
        default:
            return false;
    }
}

bool TreeBuilder::endInTable(Token& token) {
    switch (token.tag) {
        case Tag::TABLE:
            if (open_.hasInScope(Tag::TABLE, Scope::TABLE)) {
                open_.popThrough(Tag::TABLE);
                resetInsertionMode();
            }
            return true;
        case Tag::BODY:
        case Tag::CAPTION:
        case Tag::COL:
        case Tag::COLGROUP:
        case Tag::HTML:
        case Tag::TBODY:
        case Tag::TD:
        case Tag::TFOOT:
        case Tag::TH:
        case Tag::THEAD:
        case Tag::TR:
            return true;
        case Tag::TEMPLATE:
            endTemplate();
            return true;
        default:
            return false;
    }
}

/// Text goes in front of the table as soon as there is more than white space.
void TreeBuilder::inTableText(Token& token) {
    if (token.type == Token::TEXT) {
        const std::string_view text = withoutNulls(token.text);
        if (!text.empty()) {
            tableText_.push_back(text);
        }
        return;
    }
    bool isSpace = true;
    for (const std::string_view text : tableText_) {
        isSpace = isSpace && text.find_first_not_of(WHITE_SPACE) == std::string_view::npos;
    }
    Token piece;
    piece.type = Token::TEXT;
    for (const std::string_view text : tableText_) {
        piece.text = text;
        if (isSpace) {
            insertText(text);
        } else {
            inBodyWithFosterParenting(piece);
        }
    }
    reprocess(originalMode_, token);
}

void TreeBuilder::inCaption(Token& token) {
    const bool isEnd = token.isEnd(Tag::CAPTION);
    const bool isImplied = token.isEnd(Tag::TABLE) ||
                           token.isStartOf(Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::TBODY,
                                           Tag::TD, Tag::TFOOT, Tag::TH, Tag::THEAD, Tag::TR);
    if (isEnd || isImplied) {
        if (open_.hasInScope(Tag::CAPTION, Scope::TABLE)) {
            generateImpliedEndTags();
            open_.popThrough(Tag::CAPTION);
            formatting_.clearToMarker();
            mode_ = &TreeBuilder::inTable;
            if (isImplied) {
                process(token);
            }
        }
        return;
    }
    if (!token.isEndOf(Tag::BODY, Tag::COL, Tag::COLGROUP, Tag::HTML, Tag::TBODY, Tag::TD,
                       Tag::TFOOT, Tag::TH, Tag::THEAD, Tag::TR)) {
        inBody(token);
    }
}

void TreeBuilder::inColumnGroup(Token& token) {
    if (takeSpaceOrComment(token) || token.isEnd(Tag::COL)) {
        return;
    }
    if (token.isStart(Tag::HTML) || token.type == Token::END) {
        return inBody(token);
    }
    if (token.isStart(Tag::COL)) {
        return insertVoidElement(token);
    }
    if (token.isStart(Tag::TEMPLATE)) {
        return startTemplate(token);
    }
    if (token.isEnd(Tag::TEMPLATE)) {
        return endTemplate();
    }
    if (!open_.current()->isHtml(Tag::COLGROUP)) {
        return;
    }
    open_.pop();
    mode_ = &TreeBuilder::inTable;
    if (!token.isEnd(Tag::COLGROUP)) {
        process(token);
    }
}

void TreeBuilder::inTableBody(Token& token) {
    if (token.isStart(Tag::TR)) {
        clearStackBackTo(Tag::TBODY, Tag::TFOOT, Tag::THEAD);
        insertElement(token);
        mode_ = &TreeBuilder::inRow;
        return;
    }
    if (token.isStartOf(Tag::TH, Tag::TD)) {
        clearStackBackTo(Tag::TBODY, Tag::TFOOT, Tag::THEAD);
        insertElement(Tag::TR);
        return reprocess(&TreeBuilder::inRow, token);
    }
    if (token.isEndOf(Tag::TBODY, Tag::TFOOT, Tag::THEAD)) {
        if (open_.hasInScope(token.tag, Scope::TABLE)) {
            clearStackBackTo(Tag::TBODY, Tag::TFOOT, Tag::THEAD);
            open_.pop();
            mode_ = &TreeBuilder::inTable;
        }
        return;
    }
    if (token.isEnd(Tag::TABLE) || token.isStartOf(Tag::CAPTION, Tag::COL, Tag::COLGROUP,
                                                   Tag::TBODY, Tag::TFOOT, Tag::THEAD)) {
        if (open_.hasInScope(Tag::TBODY, Scope::TABLE) ||
            open_.hasInScope(Tag::THEAD, Scope::TABLE) ||
            open_.hasInScope(Tag::TFOOT, Scope::TABLE)) {
            clearStackBackTo(Tag::TBODY, Tag::TFOOT, Tag::THEAD);
            open_.pop();
            reprocess(&TreeBuilder::inTable, token);
        }
        return;
    }
    if (!token.isEndOf(Tag::BODY, Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::HTML, Tag::TD,
                       Tag::TH, Tag::TR)) {
        inTable(token);
    }
}

void TreeBuilder::inRow(Token& token) {
    if (token.isStartOf(Tag::TH, Tag::TD)) {
        clearStackBackTo(Tag::TR);
        insertElement(token);
        mode_ = &TreeBuilder::inCell;
        formatting_.pushMarker();
        return;
    }
    const bool isSectionEnd = token.isEndOf(Tag::TBODY, Tag::TFOOT, Tag::THEAD);
    const bool isImplied = token.isEnd(Tag::TABLE) || isSectionEnd ||
                           token.isStartOf(Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::TBODY,
                                           Tag::TFOOT, Tag::THEAD, Tag::TR);
    if (token.isEnd(Tag::TR) || isImplied) {
        if (open_.hasInScope(Tag::TR, Scope::TABLE) &&
            (!isSectionEnd || open_.hasInScope(token.tag, Scope::TABLE))) {
            clearStackBackTo(Tag::TR);
            open_.pop();
            mode_ = &TreeBuilder::inTableBody;
            if (isImplied) {
                process(token);
            }
        }
        return;
    }
    if (!token.isEndOf(Tag::BODY, Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::HTML, Tag::TD,
                       Tag::TH)) {
        inTable(token);
    }
}

void TreeBuilder::inCell(Token& token) {
    if (token.isEndOf(Tag::TD, Tag::TH)) {
        if (open_.hasInScope(token.tag, Scope::TABLE)) {
            generateImpliedEndTags();
            open_.popThrough(token.tag);
            formatting_.clearToMarker();
            mode_ = &TreeBuilder::inRow;
        }
        return;
    }
    if (token.isStartOf(Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::TBODY, Tag::TD, Tag::TFOOT,
                        Tag::TH, Tag::THEAD, Tag::TR)) {
        if (open_.hasInScope(Tag::TD, Scope::TABLE) || open_.hasInScope(Tag::TH, Scope::TABLE)) {
            closeCell();
            process(token);
        }
        return;
    }
    if (token.isEndOf(Tag::TABLE, Tag::TBODY, Tag::TFOOT, Tag::THEAD, Tag::TR)) {
        if (open_.hasInScope(token.tag, Scope::TABLE)) {
            closeCell();
            process(token);
        }
        return;
    }
    if (!token.isEndOf(Tag::BODY, Tag::CAPTION, Tag::COL, Tag::COLGROUP, Tag::HTML)) {
        inBody(token);
    }
}

void TreeBuilder::closeCell() {
    generateImpliedEndTags();
    bool isCell = false;
    while (!isCell && open_.size() > 1) {
        isCell = open_.current()->isHtml(Tag::TD) || open_.current()->isHtml(Tag::TH);
        open_.pop();
    }
    formatting_.clearToMarker();
    mode_ = &TreeBuilder::inRow;
}

}  // namespace intake::html
