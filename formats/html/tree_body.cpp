// The insertion modes "in body", but for its end tags, and "text".

#include "formats/html/TreeBuilder.h"
#include "formats/html/characters.h"

namespace intake::html {

void TreeBuilder::inBody(Token& token) {
    switch (token.type) {
        case Token::TEXT:
            return textInBody(token);
        case Token::COMMENT:
            return insertComment(token);
        case Token::DOCTYPE:
            return;
        case Token::START_TAG:
            return startInBody(token);
        case Token::END_TAG:
            return endInBody(token);
        case Token::END:
            if (!templateModes_.empty()) {
                inTemplate(token);
            }
            return;
    }
}

void TreeBuilder::textInBody(Token& token) {
    const std::string_view text = withoutNulls(token.text);
    if (text.empty()) {
        return;
    }
    reconstructFormatting();
    insertText(text);
    framesetAllowed_ =
        framesetAllowed_ && text.find_first_not_of(WHITE_SPACE) == std::string_view::npos;
}

void TreeBuilder::startInBody(Token& token) {
    const bool isDone = startPageElement(token) || startBlock(token) || startFormatting(token) ||
                        startObject(token) || startFormControl(token) || startSelectPart(token);
    if (!isDone) {
        startOther(token);
    }
}

/// Start tags of what a page has once, and of what belongs into its head.
bool TreeBuilder::startPageElement(Token& token) {
    if (has(token.tag, METADATA)) {
        return startInHead(token);
    }
    if (has(token.tag, TABLE_STRUCTURE)) {
        return true;
    }
    switch (token.tag) {
        case Tag::HTML:
            if (!open_.isOpen(Tag::TEMPLATE)) {
                addMissingAttributes(open_.at(0), token);
            }
            return true;
        case Tag::BODY:
            if (open_.size() > 1 && open_.at(1)->isHtml(Tag::BODY) &&
                !open_.isOpen(Tag::TEMPLATE)) {
                framesetAllowed_ = false;
                addMissingAttributes(open_.at(1), token);
            }
            return true;
        case Tag::FRAMESET:
            if (open_.size() > 1 && open_.at(1)->isHtml(Tag::BODY) && framesetAllowed_) {
                open_.at(1)->remove();
                open_.popThrough(open_.at(1));
                insertElement(token);
                mode_ = &TreeBuilder::inFrameset;
            }
            return true;
        default:
            return false;
    }
}

/// Start tags that end a paragraph.
bool TreeBuilder::startBlock(Token& token) {
    if (has(token.tag, CONTAINER)) {
        closeP();
        insertElement(token);
        return true;
    }
    switch (token.tag) {
        case Tag::P:
            closeP();
            insertElement(token);
            return true;
        case Tag::H1:
        case Tag::H2:
        case Tag::H3:
        case Tag::H4:
        case Tag::H5:
        case Tag::H6:
            closeP();
            if (has(open_.current()->tag, HEADING) && open_.current()->space == Namespace::HTML) {
                open_.pop();
            }
            insertElement(token);
            return true;
        case Tag::PRE:
        case Tag::LISTING:
            closeP();
            insertElement(token);
            skipLineFeed_ = true;
            framesetAllowed_ = false;
            return true;
        case Tag::FORM:
            if (form_ == nullptr || open_.isOpen(Tag::TEMPLATE)) {
                closeP();
                Node* const form = insertElement(token);
                form_ = open_.isOpen(Tag::TEMPLATE) ? form_ : form;
            }
            return true;
        case Tag::LI:
        case Tag::DD:
        case Tag::DT:
            startListItem(token);
            return true;
        case Tag::PLAINTEXT:
            closeP();
            insertElement(token);
            tokenizer_.setTextMode(Tokenizer::TextMode::PLAINTEXT);
            return true;
        default:
            return false;
    }
}

void TreeBuilder::startListItem(Token& token) {
    framesetAllowed_ = false;
    const auto isOpenItem = [&](const Node& node) {
        return node.space == Namespace::HTML &&
               (token.tag == Tag::LI ? node.tag == Tag::LI : isOneOf(node.tag, Tag::DD, Tag::DT));
    };
    for (size_t place = open_.size(); place > 0; --place) {
        const Node& node = *open_.at(place - 1);
        if (isOpenItem(node)) {
            closeThrough(node.tag);
            break;
        }
        if (isSpecial(node) && !isOneOf(node.tag, Tag::ADDRESS, Tag::DIV, Tag::P)) {
            break;
        }
    }
    closeP();
    insertElement(token);
}

bool TreeBuilder::startFormatting(Token& token) {
    switch (token.tag) {
        case Tag::A:
            if (Node* const open = formatting_.findLast(Tag::A)) {
                adoptionAgency(token);
                formatting_.remove(open);
                open_.remove(open);
            }
            break;
        case Tag::NOBR:
            reconstructFormatting();
            if (open_.hasInScope(Tag::NOBR)) {
                adoptionAgency(token);
            }
            break;
        default:
            if (!has(token.tag, FORMATTING)) {
                return false;
            }
            break;
    }
    reconstructFormatting();
    formatting_.push(insertElement(token));
    return true;
}

/// Start tags of what is embedded, and of tables.
bool TreeBuilder::startObject(Token& token) {
    switch (token.tag) {
        case Tag::APPLET:
        case Tag::MARQUEE:
        case Tag::OBJECT:
            reconstructFormatting();
            insertElement(token);
            formatting_.pushMarker();
            framesetAllowed_ = false;
            return true;
        case Tag::TABLE:
            if (!quirks_) {
                closeP();
            }
            insertElement(token);
            framesetAllowed_ = false;
            mode_ = &TreeBuilder::inTable;
            return true;
        case Tag::IMAGE:
            token.tag = Tag::IMG;
            token.text = nameOf(Tag::IMG);
            [[fallthrough]];
        case Tag::AREA:
        case Tag::BR:
        case Tag::EMBED:
        case Tag::IMG:
        case Tag::KEYGEN:
        case Tag::WBR:
            reconstructFormatting();
            insertVoidElement(token);
            framesetAllowed_ = false;
            return true;
        case Tag::PARAM:
        case Tag::SOURCE:
        case Tag::TRACK:
            insertVoidElement(token);
            return true;
        case Tag::HR:
            closeP();
            if (open_.hasInScope(Tag::SELECT)) {
                generateImpliedEndTags();
            }
            insertVoidElement(token);
            framesetAllowed_ = false;
            return true;
        case Tag::MATH:
            startForeignRoot(token, Namespace::MATHML);
            return true;
        case Tag::SVG:
            startForeignRoot(token, Namespace::SVG);
            return true;
        default:
            return false;
    }
}

/// Start tags of controls, and of elements whose text is read in a way of its own.
bool TreeBuilder::startFormControl(Token& token) {
    switch (token.tag) {
        case Tag::BUTTON:
            if (open_.hasInScope(Tag::BUTTON)) {
                generateImpliedEndTags();
                open_.popThrough(Tag::BUTTON);
            }
            reconstructFormatting();
            insertElement(token);
            framesetAllowed_ = false;
            return true;
        case Tag::INPUT:
            if (open_.hasInScope(Tag::SELECT)) {
                open_.popThrough(Tag::SELECT);
            }
            reconstructFormatting();
            insertVoidElement(token);
            framesetAllowed_ = framesetAllowed_ && isHiddenInput(token);
            return true;
        case Tag::TEXTAREA:
            readTextOf(token, Tokenizer::TextMode::RCDATA);
            skipLineFeed_ = true;
            framesetAllowed_ = false;
            return true;
        case Tag::XMP:
            closeP();
            reconstructFormatting();
            framesetAllowed_ = false;
            readTextOf(token, Tokenizer::TextMode::RAWTEXT);
            return true;
        case Tag::IFRAME:
            framesetAllowed_ = false;
            [[fallthrough]];
        case Tag::NOEMBED:
            readTextOf(token, Tokenizer::TextMode::RAWTEXT);
            return true;
        default:
            return false;
    }
}

bool TreeBuilder::startSelectPart(Token& token) {
    switch (token.tag) {
        case Tag::SELECT:
            if (open_.hasInScope(Tag::SELECT)) {
                open_.popThrough(Tag::SELECT);
                return true;
            }
            reconstructFormatting();
            insertElement(token);
            framesetAllowed_ = false;
            return true;
        case Tag::OPTGROUP:
        case Tag::OPTION:
            if (open_.hasInScope(Tag::SELECT)) {
                generateImpliedEndTags(token.tag == Tag::OPTION ? Tag::OPTGROUP : Tag::OTHER);
            } else if (open_.current()->isHtml(Tag::OPTION)) {
                open_.pop();
            }
            reconstructFormatting();
            insertElement(token);
            return true;
        default:
            return false;
    }
}

bool TreeBuilder::isHiddenInput(const Token& token) {
    for (const Attribute* each = token.attributes; each != nullptr; each = each->next) {
        if (each->name == "type") {
            return equalIgnoringCase(each->value, "hidden");
        }
    }
    return false;
}

void TreeBuilder::startOther(Token& token) {
    if (isOneOf(token.tag, Tag::RB, Tag::RTC) && open_.hasInScope(Tag::RUBY)) {
        generateImpliedEndTags();
    } else if (isOneOf(token.tag, Tag::RP, Tag::RT) && open_.hasInScope(Tag::RUBY)) {
        generateImpliedEndTags(Tag::RTC);
    } else if (!isOneOf(token.tag, Tag::RB, Tag::RTC, Tag::RP, Tag::RT)) {
        reconstructFormatting();
    }
    insertElement(token);
}

void TreeBuilder::text(Token& token) {
    if (token.type == Token::TEXT) {
        return insertText(token.text);
    }
    open_.pop();
    tokenizer_.setTextMode(Tokenizer::TextMode::DATA);
    mode_ = originalMode_;
    if (token.type == Token::END) {
        process(token);
    }
}

}  // namespace intake::html
