#include "formats/html/Tokenizer.h"

#include <algorithm>

#include "formats/html/character_references.h"
#include "formats/html/characters.h"
#include "formats/html/doctype.h"
#include "formats/html/script_text.h"

namespace intake::html {

namespace {

constexpr size_t NONE = std::string_view::npos;

bool endsTagName(char c) {
    return isSpace(c) || c == '/' || c == '>';
}

}  // namespace

Tokenizer::Tokenizer(std::string_view page, Arena& arena)
    : page_(page), arena_(arena), pageHasNull_(page.find('\0') != NONE) {}

void Tokenizer::setTextMode(TextMode mode, std::string_view endTag) {
    mode_ = mode;
    endTag_ = endTag;
}

void Tokenizer::next(Token& token) {
    token = Token{};
    if (atEnd()) {
        return;
    }
    if (mode_ != TextMode::DATA) {
        return readRawText(token);
    }
    if (peek() != '<' || !readMarkup(token)) {
        readText(token);
    }
}

std::string_view Tokenizer::takeUpTo(size_t position) {
    const size_t end = std::min(position, page_.size());
    const std::string_view taken = page_.substr(at_, end - at_);
    at_ = end;
    return taken;
}

void Tokenizer::skipSpaces() {
    while (isSpace(peek())) {
        ++at_;
    }
}

/// At a "<". False when it is text.
bool Tokenizer::readMarkup(Token& token) {
    const char second = peek(1);
    if (isLetter(second)) {
        ++at_;
        readTag(token, Token::START_TAG);
        return true;
    }
    if (second == '!') {
        readDeclaration(token);
        return true;
    }
    if (second == '?') {
        ++at_;
        readBogusComment(token);
        return true;
    }
    if (second != '/' || at_ + 2 == page_.size()) {
        return false;
    }
    at_ += 2;
    if (isLetter(peek())) {
        readTag(token, Token::END_TAG);
    } else if (peek() == '>') {
        ++at_;
        token.type = Token::TEXT;  // of nothing
    } else {
        readBogusComment(token);
    }
    return true;
}

void Tokenizer::readText(Token& token) {
    token.type = Token::TEXT;
    token.text =
        withoutReferences(takeUpTo(page_.find('<', at_ + 1)), ReferencePlace::TEXT, arena_);
}

void Tokenizer::readRawText(Token& token) {
    const size_t end = findTextEnd();
    if (end == at_) {
        mode_ = TextMode::DATA;
        at_ += 2;
        return readTag(token, Token::END_TAG);
    }
    token.type = Token::TEXT;
    token.text = nullsReplaced(takeUpTo(end));
    if (mode_ == TextMode::RCDATA) {
        token.text = withoutReferences(token.text, ReferencePlace::TEXT, arena_);
    }
}

size_t Tokenizer::findTextEnd() const {
    if (mode_ == TextMode::PLAINTEXT) {
        return page_.size();
    }
    if (mode_ == TextMode::SCRIPT) {
        return at_ + scriptLength(rest());
    }
    size_t end = page_.find("</", at_);
    while (end != NONE && !isEndTagAt(end)) {
        end = page_.find("</", end + 2);
    }
    return std::min(end, page_.size());
}

bool Tokenizer::isEndTagAt(size_t position) const {
    return isTagNamed(page_.substr(position + 2), endTag_);
}

void Tokenizer::readTag(Token& token, Token::Type type) {
    token.type = type;
    const auto nameEnd =
        std::find_if(page_.begin() + static_cast<ptrdiff_t>(at_), page_.end(), endsTagName);
    token.text = loweredName(takeUpTo(static_cast<size_t>(nameEnd - page_.begin())));
    token.tag = tagOf(token.text);
    lastAttribute_ = nullptr;
    attributeCount_ = 0;
    while (readAttribute(token)) {
    }
    if (atEnd()) {  // within the tag, which then counts for nothing
        token = Token{};
        return;
    }
    ++at_;
}

/// False at the end of the tag, and at that of the page.
bool Tokenizer::readAttribute(Token& token) {
    while (isSpace(peek()) || peek() == '/') {
        token.selfClosing = peek() == '/' && peek(1) == '>';
        ++at_;
    }
    if (atEnd() || peek() == '>') {
        return false;
    }
    const size_t start = at_++;  // whatever it is: an "=" may begin a name
    while (!atEnd() && !endsTagName(peek()) && peek() != '=') {
        ++at_;
    }
    const std::string_view name = loweredName(page_.substr(start, at_ - start));
    skipSpaces();
    std::string_view value;
    if (peek() == '=') {
        ++at_;
        if (!readAttributeValue(value)) {
            return false;
        }
    }
    keepAttribute(token, name, value);
    return true;
}

/// False when the page ends within it.
bool Tokenizer::readAttributeValue(std::string_view& value) {
    skipSpaces();
    const char quote = peek();
    if (quote == '"' || quote == '\'') {
        ++at_;
        value = takeUpTo(page_.find(quote, at_));
        if (atEnd()) {
            return false;
        }
        ++at_;
    } else {
        const size_t start = at_;
        while (!atEnd() && !isSpace(peek()) && peek() != '>') {
            ++at_;
        }
        value = page_.substr(start, at_ - start);
    }
    value = withoutReferences(nullsReplaced(value), ReferencePlace::ATTRIBUTE, arena_);
    return true;
}

/// The first of a name counts.
void Tokenizer::keepAttribute(Token& token, std::string_view name, std::string_view value) {
    if (token.type == Token::END_TAG || attributeCount_ == MAX_ATTRIBUTES) {
        return;
    }
    for (const Attribute* each = token.attributes; each != nullptr; each = each->next) {
        if (each->name == name) {
            return;
        }
    }
    auto* const attribute = arena_.make<Attribute>();
    attribute->name = name;
    attribute->value = value;
    (lastAttribute_ == nullptr ? token.attributes : lastAttribute_->next) = attribute;
    lastAttribute_ = attribute;
    ++attributeCount_;
}

/// At a "<!".
void Tokenizer::readDeclaration(Token& token) {
    at_ += 2;
    if (rest().starts_with("--")) {
        at_ += 2;
        readComment(token);
    } else if (startsWithIgnoringCase(rest(), "doctype")) {
        at_ += 7;
        readDoctype(token);
    } else if (cdataAllowed_ && rest().starts_with("[CDATA[")) {
        at_ += 7;
        readCdata(token);
    } else {
        readBogusComment(token);
    }
}

void Tokenizer::readComment(Token& token) {
    token.type = Token::COMMENT;
    if (rest().starts_with(">") || rest().starts_with("->")) {
        at_ = page_.find('>', at_) + 1;
        return;
    }
    size_t end = page_.find("--", at_);
    while (end != NONE && page_.compare(end, 3, "-->") != 0 && page_.compare(end, 4, "--!>") != 0) {
        end = page_.find("--", end + 1);
    }
    std::string_view comment = takeUpTo(end);
    if (atEnd()) {
        for (const std::string_view unfinished : {"--!", "--", "-"}) {
            if (comment.ends_with(unfinished)) {
                comment.remove_suffix(unfinished.size());
                break;
            }
        }
    } else {
        at_ = page_.find('>', at_) + 1;
    }
    token.text = nullsReplaced(comment);
}

void Tokenizer::readBogusComment(Token& token) {
    token.type = Token::COMMENT;
    token.text = nullsReplaced(takeUpTo(page_.find('>', at_)));
    at_ += atEnd() ? 0 : 1;
}

void Tokenizer::readDoctype(Token& token) {
    const std::string_view declaration = takeUpTo(page_.find('>', at_));
    parseDoctype(nullsReplaced(declaration), token);
    token.text = loweredName(token.text);
    token.forceQuirks = token.forceQuirks || atEnd();
    at_ += atEnd() ? 0 : 1;
}

void Tokenizer::readCdata(Token& token) {
    token.type = Token::TEXT;
    token.text = takeUpTo(page_.find("]]>", at_));
    at_ += atEnd() ? 0 : 3;
}

std::string_view Tokenizer::loweredName(std::string_view name) {
    name = nullsReplaced(name);
    if (std::none_of(name.begin(), name.end(), isUpper)) {
        return name;
    }
    char* const out = arena_.beginText(name.size());
    std::transform(name.begin(), name.end(), out, toLower);
    return arena_.keep(name.size());
}

}  // namespace intake::html
