#include "workbench/probe/database/QueryText.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace probe {

namespace {

constexpr std::array writing{"INSERT", "UPDATE", "DELETE", "MERGE",  "INTO",    "CREATE",
                             "DROP",   "ALTER",  "CALL",   "EXEC",   "EXECUTE", "TRUNCATE",
                             "GRANT",  "REVOKE", "COMMIT", "BACKUP", "RESTORE", "SHUTDOWN"};
constexpr std::array beforeTables{"FROM", "JOIN"};
constexpr std::array behindTables{"WHERE", "GROUP", "ORDER", "HAVING", "LIMIT", "UNION", "SELECT"};

bool isWordCharacter(char c) {
    return intake::isLetter(c) || intake::isDigit(c) || c == '_' || c == '$' || !intake::isAscii(c);
}

template <class Keywords>
bool isOneOf(const Keywords& keywords, const QueryWord& word) {
    return std::any_of(keywords.begin(), keywords.end(),
                       [&](const char* keyword) { return isKeyword(word, keyword); });
}

/// The sign that ends a quoted name; 0 for what begins none.
char closingSign(char opening) {
    return opening == '[' ? ']' : opening == '"' || opening == '`' ? opening : '\0';
}

}  // namespace

bool isKeyword(const QueryWord& word, std::string_view keyword) {
    return !word.isQuoted && intake::equalIgnoringCase(word.text, keyword);
}

/// Takes a query apart from its start to its end.
class QueryText::Scanner {
public:
    Scanner(std::string_view text, QueryText& query) : text_(text), query_(query) {}

    void run() {
        while (at_ < text_.size()) {
            const std::string_view rest = text_.substr(at_);
            if (rest.starts_with("--")) {
                skipLineComment();
            } else if (rest.starts_with("/*")) {
                skipComment();
            } else if (rest.front() == '\'') {
                takeQuoted('\'');
            } else if (closingSign(rest.front()) != '\0') {
                takeName();
            } else if (isWordCharacter(rest.front())) {
                takeWord();
            } else {
                takeSign(rest.front());
            }
        }
    }

private:
    std::string_view skipBehind(std::string_view end, std::size_t opening) {
        const std::size_t start = at_ + opening;
        const auto found = text_.find(end, start);
        at_ = found == std::string_view::npos ? text_.size() : found + end.size();
        return text_.substr(start, found == std::string_view::npos ? found : found - start);
    }

    /// Some want a blank behind the signs, and take them for two minuses else.
    void skipLineComment() {
        const std::string_view comment = skipBehind("\n", 2);
        const bool isPlain = comment.empty() || comment.front() == ' ' || comment.front() == '\t' ||
                             comment.front() == '\r';
        if (!isPlain) query_.isCertain_ = false;
    }

    /// Some nest them, and some run what stands in "/*! */".
    void skipComment() {
        const std::string_view comment = skipBehind("*/", 2);
        const bool isCode = comment.starts_with('!') || comment.starts_with("M!");
        if (isCode || comment.find("/*") != std::string_view::npos) query_.isCertain_ = false;
    }

    /// What stands between quotes, of which two mean one.
    std::string takeQuoted(char closing) {
        std::string content;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == closing) {
                const bool isDoubled = at_ + 1 < text_.size() && text_[at_ + 1] == closing;
                if (!isDoubled || closing == ']') break;
                ++at_;
            }
            content += text_[at_];
        }
        at_ = std::min(at_ + 1, text_.size());
        if (content.find('\\') != std::string::npos) query_.isCertain_ = false;
        return content;
    }

    void takeName() {
        const std::size_t start = at_;
        std::string name = takeQuoted(closingSign(text_[at_]));
        // Where brackets and such quotes are none, something else begins in them.
        const bool isPlain = name.find_first_of("'\"`;#") == std::string::npos &&
                             name.find("--") == std::string::npos &&
                             name.find("/*") == std::string::npos;
        if (!isPlain) query_.isCertain_ = false;
        query_.words_.push_back({std::move(name), start, at_ - start, true});
    }

    void takeWord() {
        const std::size_t start = at_;
        if (text_[at_] == '$') query_.isCertain_ = false;  // $$ begins a value
        while (at_ < text_.size() && isWordCharacter(text_[at_]))
            ++at_;
        query_.words_.push_back(
            {std::string(text_.substr(start, at_ - start)), start, at_ - start, false});
    }

    void takeSign(char sign) {
        if (sign == '#' || sign == '\\') query_.isCertain_ = false;  // # begins a comment
        constexpr std::string_view blanks = " \t\r\n\f\v";
        if (blanks.find(sign) == std::string_view::npos)
            query_.signs_.push_back({sign, at_, query_.words_.size()});
        ++at_;
    }

    const std::string_view text_;
    QueryText& query_;
    std::size_t at_ = 0;
};

QueryText::QueryText(std::string_view text) {
    Scanner(text, *this).run();
}

bool QueryText::isBlank() const {
    return isCertain_ && words_.empty() &&
           std::all_of(signs_.begin(), signs_.end(),
                       [](const Sign& sign) { return sign.character == ';'; });
}

std::string QueryText::verb() const {
    if (words_.empty() || words_.front().isQuoted) return "";
    std::string verb = words_.front().text;
    std::transform(verb.begin(), verb.end(), verb.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    });
    return verb;
}

bool QueryText::isReading() const {
    const std::string first = verb();
    const bool isTwo = std::any_of(signs_.begin(), signs_.end(), [this](const Sign& sign) {
        return sign.character == ';' && sign.wordsBefore < words_.size();
    });
    bool writes = false;
    for (std::size_t word = 0; word < words_.size(); ++word)
        writes = writes || isWriting(word);
    return (first == "SELECT" || first == "WITH") && !isTwo && !writes;
}

/// The sign that stands directly behind the word, of all that is no blank; nullptr where a word
/// does.
const QueryText::Sign* QueryText::signBehind(std::size_t word) const {
    const auto behind = std::find_if(signs_.begin(), signs_.end(), [word](const Sign& each) {
        return each.wordsBefore == word + 1;
    });
    return behind == signs_.end() ? nullptr : &*behind;
}

bool QueryText::isSignBehind(std::size_t word, char sign) const {
    const Sign* const behind = signBehind(word);
    return behind != nullptr && behind->character == sign;
}

/// A word for a statement that writes, unless it is what a column is called: AS merge.
bool QueryText::isWriting(std::size_t word) const {
    const bool isAlias =
        word > 0 && isKeyword(words_[word - 1], "AS") && signBehind(word - 1) == nullptr;
    return isOneOf(writing, words_[word]) && !isAlias;
}

/// Whether the query itself says what the table is: WITH name AS (...).
bool QueryText::isDeclared(const QueryWord& table) const {
    for (std::size_t i = 0; i + 1 < words_.size(); ++i) {
        const bool isItsName = intake::equalIgnoringCase(words_[i].text, table.text);
        if (isItsName && isKeyword(words_[i + 1], "AS") && isSignBehind(i + 1, '(')) return true;
    }
    return false;
}

std::vector<QueryWord> QueryText::tables() const {
    std::vector<QueryWord> tables;
    std::vector<bool> inFrom{false};  // by the depth of brackets
    bool isExpected = false;
    std::size_t sign = 0;
    for (std::size_t i = 0; i <= words_.size(); ++i) {
        for (; sign < signs_.size() && signs_[sign].wordsBefore == i; ++sign) {
            const char c = signs_[sign].character;
            if (c == '(') inFrom.push_back(false);
            if (c == ')' && inFrom.size() > 1) inFrom.pop_back();
            isExpected = c == ',' ? inFrom.back() : isExpected && c != '(';
        }
        if (i == words_.size()) break;
        if (isOneOf(beforeTables, words_[i])) {
            isExpected = true;
            inFrom.back() = true;
        } else if (isOneOf(behindTables, words_[i])) {
            isExpected = inFrom.back() = false;
        } else if (isExpected && !isSignBehind(i, '.')) {
            if (!isDeclared(words_[i])) tables.push_back(words_[i]);
            isExpected = false;
        }
    }
    return tables;
}

}  // namespace probe
