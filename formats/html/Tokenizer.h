#pragma once

#include <string_view>

#include "formats/html/Arena.h"
#include "formats/html/Token.h"
#include "formats/html/character_references.h"

namespace intake::html {

/// Takes a page apart by the tokenization rules of the HTML standard. Texts come in pieces of any
/// length; those without references are views of the page.
class Tokenizer {
public:
    /// Further ones of an element are left out: each is compared with all before it.
    static constexpr size_t MAX_ATTRIBUTES = 100;

    /// How the text behind a start tag is read, up to its end tag. Set by the tree builder.
    enum class TextMode { DATA, RCDATA, RAWTEXT, SCRIPT, PLAINTEXT };

    /// The page is in UTF-8, with line feeds only, and outlives this object, as does the arena.
    Tokenizer(std::string_view page, Arena& arena);

    /// The next token; END again and again behind the last one.
    void next(Token& token);

    /// `endTag` is the name of the element that the text belongs to.
    void setTextMode(TextMode mode, std::string_view endTag = {});

    /// Whether CDATA sections are such; they are in foreign content.
    void allowCdata(bool allowed) { cdataAllowed_ = allowed; }

    /// Whether the page has any character U+0000.
    bool pageHasNull() const { return pageHasNull_; }

private:
    std::string_view rest() const { return page_.substr(at_); }
    bool atEnd() const { return at_ == page_.size(); }
    char peek(size_t ahead = 0) const {
        return at_ + ahead < page_.size() ? page_[at_ + ahead] : '\0';
    }
    /// Moves to `position`, which may be none, and returns what lay before it.
    std::string_view takeUpTo(size_t position);
    void skipSpaces();

    bool readMarkup(Token& token);
    void readText(Token& token);
    void readRawText(Token& token);

    void readTag(Token& token, Token::Type type);
    bool readAttribute(Token& token);
    bool readAttributeValue(std::string_view& value);
    void keepAttribute(Token& token, std::string_view name, std::string_view value);

    void readDeclaration(Token& token);
    void readComment(Token& token);
    void readBogusComment(Token& token);
    void readDoctype(Token& token);
    void readCdata(Token& token);

    /// The end of the text that the current mode reads.
    size_t findTextEnd() const;
    bool isEndTagAt(size_t position) const;

    std::string_view loweredName(std::string_view name);
    std::string_view nullsReplaced(std::string_view text) {
        return pageHasNull_ ? withReplacedNulls(text, arena_) : text;
    }

    std::string_view page_;
    Arena& arena_;
    const bool pageHasNull_;
    size_t at_ = 0;
    TextMode mode_ = TextMode::DATA;
    std::string_view endTag_;
    bool cdataAllowed_ = false;
    Attribute* lastAttribute_ = nullptr;  // of the tag that is being read
    size_t attributeCount_ = 0;
};

}  // namespace intake::html
