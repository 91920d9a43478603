#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// A name or a word of a query, as it means and where it stands.
struct QueryWord {
    std::string text;        // without quotes or brackets
    std::size_t offset = 0;  // in bytes
    std::size_t length = 0;  // as it is written
    bool isQuoted = false;
};

/// An SQL query as far as one can tell from its text alone: comments and values in single quotes
/// are passed over.
class QueryText {
public:
    explicit QueryText(std::string_view text);

    /// Whether there is nothing to run, for any database.
    bool isBlank() const;

    /// "SELECT", "INSERT", in capitals; empty where the query begins with no word.
    std::string verb() const;

    /// Whether all databases take it apart like this: they do not agree on what is a comment, and
    /// on where a quote ends.
    bool isCertain() const { return isCertain_; }

    /// Whether it is one SELECT or WITH in which no word says that something is written.
    bool isReading() const;

    const std::vector<QueryWord>& words() const { return words_; }

    /// The words that stand where the name of a table does, the last one of a name with dots; not
    /// those that the query itself declares.
    std::vector<QueryWord> tables() const;

private:
    struct Sign {
        char character;
        std::size_t offset;
        std::size_t wordsBefore;
    };

    class Scanner;

    const Sign* signBehind(std::size_t word) const;
    bool isSignBehind(std::size_t word, char sign) const;
    bool isWriting(std::size_t word) const;
    bool isDeclared(const QueryWord& table) const;

    std::vector<QueryWord> words_;
    std::vector<Sign> signs_;  // in the order of the text
    bool isCertain_ = true;
};

/// Whether a query word is this keyword, which is given in capitals.
bool isKeyword(const QueryWord& word, std::string_view keyword);

}  // namespace probe
