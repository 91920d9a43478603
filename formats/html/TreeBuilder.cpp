#include "formats/html/TreeBuilder.h"

#include <algorithm>
#include <utility>

#include "formats/html/PageError.h"
#include "formats/html/characters.h"

namespace intake::html {

namespace {

constexpr size_t MAX_DEPTH = 2000;
constexpr size_t MIN_NODES = 10000;
/// The sum of the depths at all tokens, which takes some seconds. Sound pages of the largest size
/// stay far below.
constexpr size_t MAX_STEPS = 2'000'000'000;
constexpr size_t TOKENS_PER_LOOK = 4096;

/// Makes every line end a line feed.
void normalizeLineEnds(std::string& text) {
    size_t out = text.find('\r');
    for (size_t in = out; in < text.size(); ++in) {
        if (text[in] == '\r') {
            text[out++] = '\n';
            in += in + 1 < text.size() && text[in + 1] == '\n' ? 1 : 0;
        } else {
            text[out++] = text[in];
        }
    }
    text.resize(std::min(out, text.size()));
}

}  // namespace

std::unique_ptr<Page> parsePage(std::string bytes, const EndMark& endMark, size_t maxTreeBytes) {
    normalizeLineEnds(bytes);
    auto page = std::make_unique<Page>();
    page->bytes = std::move(bytes);
    page->document.type = NodeType::DOCUMENT;
    TreeBuilder(*page, endMark, maxTreeBytes).build();
    return page;
}

// Without multiplication, no node is shorter than a byte.
TreeBuilder::TreeBuilder(Page& page, const EndMark& endMark, size_t maxTreeBytes)
    : page_(page),
      endMark_(endMark),
      tokenizer_(page.bytes, page.arena),
      maxNodes_(page.bytes.size() + MIN_NODES),
      maxTreeBytes_(maxTreeBytes) {}

void TreeBuilder::build() {
    Token token;
    size_t tokens = 0;
    bool isEnd = false;
    while (!isEnd) {
        if (++tokens % TOKENS_PER_LOOK == 0) {
            endMark_.throwIfSet();
        }
        checkCost();
        tokenizer_.allowCdata(!open_.isEmpty() && open_.current()->space != Namespace::HTML);
        tokenizer_.next(token);
        isEnd = token.type == Token::END;
        if (std::exchange(skipLineFeed_, false) && token.type == Token::TEXT &&
            token.text.starts_with('\n')) {
            token.text.remove_prefix(1);
        }
        process(token);
    }
}

/// One step of the standard may walk along all open elements, whatever comes of it.
void TreeBuilder::checkCost() {
    steps_ += open_.size();
    if (steps_ > MAX_STEPS) {
        throw PageError("The page is nested too deeply for its length");
    }
    if (page_.arena.size() > maxTreeBytes_) {
        throw PageError("The elements of the page take more than " +
                        std::to_string(maxTreeBytes_ / 1'000'000) + " MB of memory");
    }
}

void TreeBuilder::process(Token& token) {
    if (token.type == Token::TEXT && token.text.empty()) {
        return;
    }
    if (belongsToHtml(token)) {
        (this->*mode_)(token);
    } else {
        inForeignContent(token);
    }
}

void TreeBuilder::reprocess(Mode mode, Token& token) {
    mode_ = mode;
    process(token);
}

namespace {

bool isMathmlTextPoint(const Node& node) {
    return node.space == Namespace::MATHML &&
           isOneOf(node.tag, Tag::MI, Tag::MO, Tag::MN, Tag::MS, Tag::MTEXT);
}

bool isHtmlPoint(const Node& node) {
    if (node.space == Namespace::SVG) {
        return isOneOf(node.tag, Tag::FOREIGN_OBJECT, Tag::DESC, Tag::TITLE);
    }
    if (node.space != Namespace::MATHML || node.tag != Tag::ANNOTATION_XML) {
        return false;
    }
    const std::string_view* const encoding = node.attribute("encoding");
    return encoding != nullptr && (equalIgnoringCase(*encoding, "text/html") ||
                                   equalIgnoringCase(*encoding, "application/xhtml+xml"));
}

}  // namespace

bool TreeBuilder::isHtmlParent(const Node& node) {
    return node.space == Namespace::HTML || isMathmlTextPoint(node) || isHtmlPoint(node);
}

/// Whether the rules of HTML treat a token, or those of foreign content.
bool TreeBuilder::belongsToHtml(const Token& token) const {
    if (open_.isEmpty() || open_.current()->space == Namespace::HTML || token.type == Token::END) {
        return true;
    }
    const Node& current = *open_.current();
    const bool isStart = token.type == Token::START_TAG;
    if (isMathmlTextPoint(current) &&
        (token.type == Token::TEXT ||
         (isStart && !isOneOf(token.tag, Tag::MGLYPH, Tag::MALIGNMARK)))) {
        return true;
    }
    if (current.tag == Tag::ANNOTATION_XML && current.space == Namespace::MATHML &&
        token.isStart(Tag::SVG)) {
        return true;
    }
    return isHtmlPoint(current) && (isStart || token.type == Token::TEXT);
}

Node* TreeBuilder::createNode(NodeType type) {
    if (++nodeCount_ > maxNodes_) {
        throw PageError("The page leaves too many formatting elements open");
    }
    Node* const node = page_.arena.make<Node>();
    node->type = type;
    return node;
}

Node* TreeBuilder::createElement(std::string_view name, Tag tag, Attribute* attributes,
                                 Namespace space) {
    Node* const element = createNode(NodeType::ELEMENT);
    element->text = name;
    element->tag = tag;
    element->attributes = attributes;
    element->space = space;
    if (element->isHtml(Tag::TEMPLATE)) {
        element->content = createNode(NodeType::DOCUMENT);
    }
    return element;
}

TreeBuilder::InsertionLocation TreeBuilder::insertionLocation(Node* target) const {
    target = target == nullptr ? open_.current() : target;
    if (fosterParenting_ && target->space == Namespace::HTML && has(target->tag, TABLE_PART)) {
        return fosterLocation();
    }
    return {target->content != nullptr ? target->content : target, nullptr};
}

/// Where what may not stand in a table goes: in front of it.
TreeBuilder::InsertionLocation TreeBuilder::fosterLocation() const {
    const size_t lastTemplate = open_.findLast(Tag::TEMPLATE);
    const size_t lastTable = open_.findLast(Tag::TABLE);
    const bool isTableOpen = lastTable != OpenElements::NOWHERE;
    if (lastTemplate != OpenElements::NOWHERE && (!isTableOpen || lastTemplate > lastTable)) {
        return {open_.at(lastTemplate)->content, nullptr};
    }
    if (!isTableOpen) {
        return {open_.at(0), nullptr};
    }
    Node* const table = open_.at(lastTable);
    if (table->parent != nullptr) {
        return {table->parent, table};
    }
    return {open_.at(lastTable - 1), nullptr};
}

Node* TreeBuilder::insertElement(const Token& token, Namespace space) {
    Node* const element = createElement(token.text, token.tag, token.attributes, space);
    const InsertionLocation location = insertionLocation();
    element->moveTo(location.parent, location.before);
    open(element);
    return element;
}

Node* TreeBuilder::insertElement(Tag tag) {
    Token token;
    token.tag = tag;
    token.text = nameOf(tag);
    return insertElement(token);
}

void TreeBuilder::insertVoidElement(const Token& token) {
    insertElement(token);
    open_.pop();
}

void TreeBuilder::open(Node* element) {
    if (open_.size() == MAX_DEPTH) {
        throw PageError("The page is nested deeper than " + std::to_string(MAX_DEPTH) +
                        " elements");
    }
    open_.push(element);
}

/// What directly continues the text in front of it becomes part of that node.
void TreeBuilder::insertText(std::string_view text) {
    if (text.empty()) {
        return;
    }
    const InsertionLocation location = insertionLocation();
    Node* const before =
        location.before == nullptr ? location.parent->lastChild : location.before->previous;
    if (before != nullptr && before->type == NodeType::TEXT &&
        before->text.data() + before->text.size() == text.data()) {
        before->text = {before->text.data(), before->text.size() + text.size()};
        return;
    }
    Node* const node = createNode(NodeType::TEXT);
    node->text = text;
    node->moveTo(location.parent, location.before);
}

void TreeBuilder::insertComment(const Token& token, Node* parent) {
    const InsertionLocation location =
        parent == nullptr ? insertionLocation() : InsertionLocation{parent, nullptr};
    Node* const comment = createNode(NodeType::COMMENT);
    comment->text = token.text;
    comment->moveTo(location.parent, location.before);
}

void TreeBuilder::readTextOf(const Token& token, Tokenizer::TextMode mode) {
    insertElement(token);
    tokenizer_.setTextMode(mode, token.text);
    originalMode_ = mode_;
    mode_ = &TreeBuilder::text;
}

/// Takes the white space from the front of a text token.
std::string_view TreeBuilder::takeLeadingSpace(Token& token) const {
    const size_t end = std::min(token.text.find_first_not_of(WHITE_SPACE), token.text.size());
    const std::string_view space = token.text.substr(0, end);
    token.text.remove_prefix(end);
    return space;
}

/// Inserts a comment, or the white space in front of a text, where the mode is. True when that was
/// all of the token, and for a doctype, which means nothing here.
bool TreeBuilder::takeSpaceOrComment(Token& token) {
    switch (token.type) {
        case Token::COMMENT:
            insertComment(token);
            return true;
        case Token::DOCTYPE:
            return true;
        case Token::TEXT:
            insertText(takeLeadingSpace(token));
            return token.text.empty();
        default:
            return false;
    }
}

std::string_view TreeBuilder::onlySpaces(std::string_view text) {
    char* const out = page_.arena.beginText(text.size());
    char* const end = std::copy_if(text.begin(), text.end(), out, isSpace);
    return page_.arena.keep(static_cast<size_t>(end - out));
}

std::string_view TreeBuilder::withoutNulls(std::string_view text) {
    if (!tokenizer_.pageHasNull() || text.find('\0') == std::string_view::npos) {
        return text;
    }
    char* const out = page_.arena.beginText(text.size());
    char* const end = std::remove_copy(text.begin(), text.end(), out, '\0');
    return page_.arena.keep(static_cast<size_t>(end - out));
}

void TreeBuilder::addMissingAttributes(Node* element, const Token& token) {
    size_t count = 0;
    for (const Attribute* each = element->attributes; each != nullptr; each = each->next) {
        ++count;
    }
    Attribute* each = token.attributes;
    while (each != nullptr && count < Tokenizer::MAX_ATTRIBUTES) {
        Attribute* const next = each->next;
        if (element->attribute(each->name) == nullptr) {
            each->next = element->attributes;
            element->attributes = each;
            ++count;
        }
        each = next;
    }
}

}  // namespace intake::html
