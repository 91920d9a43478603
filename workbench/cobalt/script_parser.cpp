#include "workbench/cobalt/script_parser.h"

#include <string>
#include <utility>

#include "formats/text/trim.h"

namespace cobalt {

namespace {

using std::string_view;

// Reads values and the members of structures by recursive descent.
class ScriptParser {
public:
    explicit ScriptParser(string_view script) : cursor_(script) {}

    Assignments parse() {
        Assignments assignments;
        for (cursor_.skipBlanksAnd(';'); !cursor_.atEnd(); cursor_.skipBlanksAnd(';')) {
            if (cursor_.peek() == '=' || cursor_.peek() == '[') {
                cursor_.failExpected("the name of a field");
            }
            assignments.push_back(readAssignment());
        }
        return assignments;
    }

private:
    // target = values ;
    Assignment readAssignment() {
        Assignment assignment;
        assignment.target = readTarget(cursor_);
        assignment.value = readAssigned(assignment.target);
        return assignment;
    }

    // = values ;
    Value readAssigned(const Target& target) {
        cursor_.advance();
        cursor_.skipBlanks();
        const std::size_t start = cursor_.offset();
        Value value = combine(target, readValues(target));
        requireRoom(target, value.entries().size(), start);
        return value;
    }

    AssignedValues readValues(const Target& target) {
        AssignedValues assigned;
        const bool isPlain = target.kind == Target::Kind::Whole;
        string_view stops = isPlain ? ";" : ",;";
        while (!cursor_.take(';')) {
            assigned.values.push_back(readValue(stops));
            stops = ",;";
            cursor_.skipBlanks();
            if (cursor_.take(',')) {
                assigned.separated = true;
                cursor_.skipBlanks();
            } else if (cursor_.peek() != ';') {
                cursor_.failExpected("',' or ';' after the value");
            }
        }
        return assigned;
    }

    // An unquoted value ends at one of `stops`.
    Value readValue(string_view stops) {
        if (cursor_.peek() == '"') return Value::text(std::string(readQuoted()));
        if (cursor_.peek() == '{') return readBraces();
        return Value::fromUnquoted(intake::trimmed(cursor_.readTo(cursor_.findAny(stops)), BLANKS));
    }

    string_view readQuoted() {
        return cursor_.startsWith("\"\"") ? readDoublyQuoted() : readSinglyQuoted();
    }

    string_view readDoublyQuoted() {
        const std::size_t opening = cursor_.offset();
        cursor_.advance(2);
        if (atEndOfValue(cursor_.offset())) return {};
        const std::size_t closing = findDoubleClosing();
        if (closing == string_view::npos) failUnclosed(opening, "'\"\"'");
        const string_view text = cursor_.readTo(closing);
        cursor_.advance(2);
        return text;
    }

    // Two quotes inside the text are part of it, unless the value could end after them.
    std::size_t findDoubleClosing() const {
        std::size_t found = cursor_.text().find("\"\"", cursor_.offset());
        while (found != string_view::npos && !atEndOfValue(found + 2)) {
            found = cursor_.text().find("\"\"", found + 1);
        }
        return found;
    }

    string_view readSinglyQuoted() {
        const std::size_t opening = cursor_.offset();
        cursor_.advance();
        const std::size_t closing = cursor_.text().find("\";", cursor_.offset());
        if (closing == string_view::npos) failUnclosed(opening, "'\";'");
        const string_view text = cursor_.readTo(closing);
        cursor_.advance();
        return text;
    }

    bool atEndOfValue(std::size_t offset) const {
        const string_view text = cursor_.text();
        return offset >= text.size() || contains(";,}", text[offset]);
    }

    [[noreturn]] void failUnclosed(std::size_t opening, const std::string& closing) {
        cursor_.moveTo(opening);
        cursor_.fail("expected " + closing + " at the end of this quoted text");
    }

    // { members } or { elements }
    Value readBraces() {
        const std::size_t opening = cursor_.offset();
        if (depth_ == maxNesting) {
            cursor_.fail("expected at most " + std::to_string(maxNesting) + " nested braces");
        }
        ++depth_;
        cursor_.advance();
        cursor_.skipBlanksAnd(';');
        Value value =
            startsMember() ? Value::structure(readMembers(opening, {})) : readElements(opening);
        --depth_;
        return value;
    }

    // Empty braces are a structure. The name of a member may hold nearly anything; only the first
    // one is taken for the element of a list when ';', '}' or a comma with a quoted or braced value
    // comes before its "=".
    bool startsMember() const {
        if (cursor_.peek() == '}') return true;
        if (contains("{=[\",", cursor_.peek())) return false;
        Cursor ahead = cursor_;
        ahead.moveTo(ahead.findAny("=[;},"));
        while (ahead.take(',')) {
            ahead.skipBlanks();
            if (contains("\"{", ahead.peek())) return false;
            ahead.moveTo(ahead.findAny("=[;},"));
        }
        return contains("=[", ahead.peek());
    }

    // Those without a name are one member, of which the last value counts.
    Entries readMembers(std::size_t opening, Entries members) {
        for (; !cursor_.take('}'); cursor_.skipBlanksAnd(';')) {
            failAtEnd(opening);
            if (cursor_.peek() == '=') {
                members.define("") = readElement();
                continue;
            }
            Assignment member = readAssignment();
            assign(members.define(member.target.name), member.target, std::move(member.value));
        }
        members.shrinkToFit();
        return members;
    }

    // A list, or a structure whose first members have no name.
    Value readElements(std::size_t opening) {
        Entries elements;
        bool nameless = true;  // each so far is =value;
        while (!cursor_.take('}')) {
            failAtEnd(opening);
            if (nameless && !elements.empty() && startsMember()) {
                Entries members;
                members.define("") = (elements.end() - 1)->value;
                return Value::structure(readMembers(opening, std::move(members)));
            }
            nameless = nameless && cursor_.peek() == '=';
            elements.define(std::to_string(elements.size())) = readElement();
            cursor_.skipBlanks();
        }
        elements.shrinkToFit();
        return Value::array(std::move(elements));
    }

    // value, or =value; or [a-b]=values;
    Value readElement() {
        if (cursor_.peek() == '[') return readNestedRange();
        cursor_.take('=');
        cursor_.skipBlanks();
        Value value = readValue(",;}");
        cursor_.skipBlanks();
        if (!cursor_.take(',') && !cursor_.take(';') && cursor_.peek() != '}') {
            cursor_.failExpected("',' or ';' after the element");
        }
        return value;
    }

    Value readNestedRange() {
        const std::size_t start = cursor_.offset();
        const Target target = readTarget(cursor_);
        if (target.kind != Target::Kind::Range) {
            cursor_.moveTo(start);
            cursor_.failExpected("a range such as [0-2] in a list");
        }
        return readAssigned(target);
    }

    void failAtEnd(std::size_t opening) {
        if (!cursor_.atEnd()) return;
        cursor_.moveTo(opening);
        cursor_.fail("expected a '}' for this '{'");
    }

    Cursor cursor_;
    int depth_ = 0;
};

}  // namespace

std::variant<Assignments, ScriptError> parseScript(std::string_view script) {
    try {
        return ScriptParser(script).parse();
    } catch (const ParseFailure& failure) {
        return errorAt(script, failure.offset, failure.message);
    }
}

}  // namespace cobalt
