#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace cobalt {

/// Thrown inside the parsers, which turn it into a ScriptError at their border.
struct ParseFailure {
    std::size_t offset;
    std::string message;
};

/// White space of scripts.
constexpr std::string_view BLANKS = " \n\r\t\f\v";

inline bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\v';
}

inline bool contains(std::string_view set, char c) {
    return set.find(c) != std::string_view::npos;
}

/// A place in the text that a parser reads. The text must outlive it.
class Cursor {
public:
    explicit Cursor(std::string_view text) : text_(text) {}

    std::string_view text() const { return text_; }
    std::size_t offset() const { return offset_; }
    bool atEnd() const { return offset_ == text_.size(); }

    /// The character at that distance, or a zero character beyond the end.
    char peek(std::size_t distance = 0) const {
        return distance < text_.size() - offset_ ? text_[offset_ + distance] : '\0';
    }

    bool startsWith(std::string_view prefix) const {
        return text_.substr(offset_).starts_with(prefix);
    }

    void advance(std::size_t count = 1) { offset_ += count; }
    void moveTo(std::size_t offset) { offset_ = offset; }

    /// Steps over `c` when it is next.
    bool take(char c) {
        if (atEnd() || text_[offset_] != c) return false;
        ++offset_;
        return true;
    }

    void skipBlanks() {
        while (!atEnd() && isBlank(text_[offset_]))
            ++offset_;
    }

    void skipBlanksAnd(char separator) {
        while (!atEnd() && (isBlank(text_[offset_]) || text_[offset_] == separator))
            ++offset_;
    }

    /// The offset of the next character of `stops`, or the end of the text.
    std::size_t findAny(std::string_view stops) const {
        std::size_t at = offset_;
        while (at < text_.size() && stops.find(text_[at]) == std::string_view::npos)
            ++at;
        return at;
    }

    /// The text from here to `end`, which is where the cursor goes.
    std::string_view readTo(std::size_t end) {
        const std::string_view read = text_.substr(offset_, end - offset_);
        offset_ = end;
        return read;
    }

    [[noreturn]] void fail(std::string message) const {
        throw ParseFailure{offset_, std::move(message)};
    }

    /// "expected …, found …", with what stands here.
    [[noreturn]] void failExpected(std::string_view expected) const;

private:
    std::string_view text_;
    std::size_t offset_ = 0;
};

}  // namespace cobalt
