#include "workbench/cli/json_fault.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "formats/text/utf8.h"
#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

struct Expectation {
    std::string_view cause;  // how the parser's words begin
    std::string_view words;
};

constexpr std::array expectations{
    Expectation{"The document is empty", "something in it"},
    Expectation{"The document root must not be followed", "the end of the file"},
    Expectation{"Invalid value",
                "a value: a text in double quotes, a number, true, false, null, {…} or […]"},
    Expectation{"Missing a name", "a name in double quotes"},
    Expectation{"Missing a colon", "a \":\" behind the name"},
    Expectation{"Missing a comma or '}'", "a comma or a \"}\""},
    Expectation{"Missing a comma or ']'", "a comma or a \"]\""},
    Expectation{"Incorrect hex digit", "four digits from 0 to f behind \"\\u\""},
    Expectation{"The surrogate pair", "the other half of the character behind \"\\u\""},
    Expectation{"Invalid escape", "one of \" \\ / b f n r t u behind the \"\\\""},
    Expectation{"A line break, tab", "no line break or tab in a text; write \\n or \\t"},
    Expectation{"Missing a closing quotation", "a double quote at the end of the text"},
    Expectation{"Invalid encoding", "a text in UTF-8"},
    Expectation{"Miss fraction", "a digit behind the decimal point"},
    Expectation{"Miss exponent", "a digit in the exponent"},
    Expectation{"A zero byte", "the end of the file"},
    Expectation{"The document is not in UTF-8", "a text in UTF-8"},
};

std::string expected(std::string_view cause) {
    const auto* const row =
        std::find_if(expectations.begin(), expectations.end(),
                     [cause](const Expectation& each) { return cause.starts_with(each.cause); });
    if (row != expectations.end()) return "expected " + std::string(row->words);
    return std::string(cause.substr(0, cause.find_last_not_of('.') + 1));
}

// Takes "line 3, column 14: " from the start of a message.
bool takeNumber(std::string_view& message, std::string_view before, std::size_t& number) {
    if (!message.starts_with(before)) return false;
    const char* const digits = message.data() + before.size();
    const auto read = std::from_chars(digits, message.data() + message.size(), number);
    if (read.ec != std::errc()) return false;
    message.remove_prefix(static_cast<std::size_t>(read.ptr - message.data()));
    return true;
}

std::string_view lineOf(std::string_view source, std::size_t number) {
    for (std::size_t line = 1; line < number; ++line)
        source.remove_prefix(std::min(source.find('\n'), source.size() - 1) + 1);
    return source;
}

std::size_t characters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(intake::utf8CharacterAt(text).length);
    return count;
}

std::string found(std::string_view rest) {
    if (rest.empty()) return ", found the end of the file";
    const auto character = intake::utf8CharacterAt(rest);
    if (character.code == '\n' || character.code == '\r') return ", found the end of the line";
    if (!character.isValid || character.code <= ' ') return "";
    if (character.code == '"') return ", found a double quote";
    return ", found \"" + std::string(rest.substr(0, character.length)) + "\"";
}

bool tellsWhatWasFound(std::string_view cause) {
    if (cause.starts_with("Missing a closing")) return false;
    return cause.starts_with("Missing a ") || cause.starts_with("Invalid value") ||
           cause.starts_with("The document root");
}

// Behind a comma a name or a value has to come.
std::string guess(std::string_view cause, std::string_view rest) {
    const bool isBehindComma =
        cause.starts_with("Missing a name") || cause.starts_with("Invalid value");
    const bool closes = rest.starts_with('}') || rest.starts_with(']');
    return isBehindComma && closes ? " Is there a comma too many?" : "";
}

}  // namespace

std::string jsonFault(std::string_view message, std::string_view source) {
    std::size_t line = 0;
    std::size_t column = 0;
    if (!takeNumber(message, "line ", line) || !takeNumber(message, ", column ", column))
        return expected(message) + ".";
    const std::string_view cause = message.substr(std::min<std::size_t>(2, message.size()));
    const std::string_view text = lineOf(source, line);
    const std::size_t mark = text.starts_with(intake::UTF8_MARK) && line == 1 ? 1 : 0;
    const std::size_t offset = std::min(column - 1, text.size());
    const std::string_view rest = text.substr(offset);
    column = characters(text.substr(0, offset)) + 1 - mark;
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " +
           expected(cause) + (tellsWhatWasFound(cause) ? found(rest) : "") + "." +
           guess(cause, rest);
}

}  // namespace workbench
