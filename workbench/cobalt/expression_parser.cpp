#include "workbench/cobalt/expression_parser.h"

#include <charconv>
#include <string>
#include <utility>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace cobalt {

namespace {

using std::string_view;

struct OperatorSign {
    string_view sign;
    Operator op;
    int precedence;
};

// A sign that begins another one stands after it.
constexpr OperatorSign operatorSigns[] = {
    {"==", Operator::Equal, 1},       {"!=", Operator::NotEqual, 1},
    {"<=", Operator::LessOrEqual, 1}, {">=", Operator::GreaterOrEqual, 1},
    {"<", Operator::Less, 1},         {">", Operator::Greater, 1},
    {"+", Operator::Add, 2},          {"-", Operator::Subtract, 2},
    {"*", Operator::Multiply, 3},     {"/", Operator::Divide, 3},
};
constexpr int lowestPrecedence = 1;

bool contains(string_view set, char c) {
    return set.find(c) != string_view::npos;
}

// A name may hold whatever has no meaning of its own.
bool isNameCharacter(char c) {
    return !isBlank(c) && !contains("+-*/=!<>()[]{},;\"", c);
}

// Writes calculations in the order in which they are carried out, operands before operators.
class ExpressionParser {
public:
    explicit ExpressionParser(string_view text) : cursor_(text) {}

    std::vector<Statement> parse() {
        std::vector<Statement> statements;
        for (cursor_.skipBlanksAnd(';'); !cursor_.atEnd(); cursor_.skipBlanksAnd(';')) {
            statements.push_back(startsAssignment() ? readAssignment() : readCalculation());
            if (!atStatementEnd()) cursor_.failExpected("an operator or ';'");
        }
        return statements;
    }

private:
    // Whether a name or name[key] is followed by a "=" that is no comparison.
    bool startsAssignment() const {
        Cursor ahead = cursor_;
        ahead.moveTo(ahead.findAny("=[;\"("));
        if (ahead.peek() == '=' && ahead.offset() > 0) {
            const char before = ahead.text()[ahead.offset() - 1];
            return ahead.peek(1) != '=' && !contains("!<>", before);
        }
        if (ahead.peek() == '[') {
            ahead.moveTo(ahead.findAny("]"));
            if (ahead.take(']')) ahead.skipBlanks();
        }
        return ahead.peek() == '=' && ahead.peek(1) != '=';
    }

    bool atStatementEnd() const { return cursor_.atEnd() || cursor_.peek() == ';'; }

    Statement readAssignment() {
        if (contains("=[", cursor_.peek())) cursor_.failExpected("the name of a field");
        Statement statement;
        statement.target = readTarget(cursor_);
        cursor_.advance();
        cursor_.skipBlanks();
        const std::size_t start = cursor_.offset();
        readValues(statement);
        requireRoom(*statement.target, statement.values.size(), start);
        return statement;
    }

    void readValues(Statement& statement) {
        while (!atStatementEnd()) {
            readExpression(lowestPrecedence, statement.values.emplace_back());
            if (!cursor_.take(',')) return;
            statement.separated = true;
            cursor_.skipBlanks();
        }
    }

    Statement readCalculation() {
        Statement statement;
        readExpression(lowestPrecedence, statement.values.emplace_back());
        return statement;
    }

    // Operands with operators of that precedence or a higher one between them.
    void readExpression(int precedence, Calculation& calculation) {
        readOperand(calculation);
        while (const OperatorSign* sign = nextOperator(precedence)) {
            const std::size_t offset = cursor_.offset();
            cursor_.advance(sign->sign.size());
            readExpression(sign->precedence + 1, calculation);
            Instruction combine{Instruction::Code::Combine, offset};
            combine.op = sign->op;
            calculation.push_back(std::move(combine));
        }
    }

    const OperatorSign* nextOperator(int precedence) const {
        for (const OperatorSign& sign : operatorSigns) {
            if (!cursor_.startsWith(sign.sign)) continue;
            return sign.precedence >= precedence ? &sign : nullptr;
        }
        return nullptr;
    }

    void readOperand(Calculation& calculation) {
        cursor_.skipBlanks();
        const char next = cursor_.peek();
        if (next == '-') {
            readNegated(calculation);
        } else if (next == '(') {
            readParentheses(calculation);
        } else if (next == '"') {
            const std::size_t offset = cursor_.offset();
            pushConstant(calculation, offset, Operand::ofText(std::string(readQuoted())));
        } else if (intake::isDigit(next) || (next == '.' && intake::isDigit(cursor_.peek(1)))) {
            readNumber(calculation);
        } else if (!cursor_.atEnd() && isNameCharacter(next)) {
            readNamed(calculation);
        } else {
            cursor_.failExpected("a value");
        }
        cursor_.skipBlanks();
    }

    static void pushConstant(Calculation& calculation, std::size_t offset, Operand constant) {
        calculation.push_back({Instruction::Code::PushConstant, offset, std::move(constant)});
    }

    void readNegated(Calculation& calculation) {
        const std::size_t offset = cursor_.offset();
        enter();
        cursor_.advance();
        readOperand(calculation);
        calculation.push_back({Instruction::Code::Negate, offset});
        --depth_;
    }

    void readParentheses(Calculation& calculation) {
        const std::size_t opening = cursor_.offset();
        enter();
        cursor_.advance();
        readExpression(lowestPrecedence, calculation);
        if (cursor_.atEnd()) {
            cursor_.moveTo(opening);
            cursor_.fail("expected a ')' for this '('");
        }
        if (!cursor_.take(')')) cursor_.failExpected("an operator or ')'");
        --depth_;
    }

    void enter() {
        if (++depth_ <= maxNesting) return;
        cursor_.fail("expected at most " + std::to_string(maxNesting) + " nested parentheses");
    }

    void readNumber(Calculation& calculation) {
        const std::size_t offset = cursor_.offset();
        const string_view rest = cursor_.text().substr(offset);
        double number = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
        const auto length = static_cast<std::size_t>(end - rest.data());
        const string_view written = cursor_.readTo(offset + length);
        pushConstant(calculation, offset, Operand::ofData(Value::fromUnquoted(written)));
    }

    // Name, Name[key] or command(…). The words of a name may have blanks between them.
    void readNamed(Calculation& calculation) {
        Instruction push{Instruction::Code::PushField, cursor_.offset()};
        push.name = readName();
        if (cursor_.peek() == '(') {
            readCommand(push, calculation);
            return;
        }
        if (cursor_.peek() == '[') {
            const std::size_t closing = cursor_.findAny("]");
            if (closing == cursor_.text().size()) cursor_.fail("expected a ']' for this '['");
            cursor_.advance();
            push.code = Instruction::Code::PushEntry;
            push.key = cursor_.readTo(closing);
            cursor_.advance();
        }
        calculation.push_back(std::move(push));
    }

    string_view readName() {
        const std::size_t start = cursor_.offset();
        std::size_t end = start;
        const string_view text = cursor_.text();
        while (end < text.size() && (isNameCharacter(text[end]) || contains(" \t", text[end]))) {
            ++end;
        }
        return intake::trimmed(cursor_.readTo(end), BLANKS);
    }

    void readCommand(const Instruction& named, Calculation& calculation) {
        if (named.name != "command") {
            cursor_.moveTo(named.offset);
            cursor_.failExpected("command(...), which is the only function");
        }
        readParentheses(calculation);
        calculation.push_back({Instruction::Code::SendCommand, named.offset});
    }

    string_view readQuoted() {
        const std::size_t opening = cursor_.offset();
        if (cursor_.startsWith("\"\"")) return readDoublyQuoted();
        cursor_.advance();
        const std::size_t closing = findClosing("\"");
        if (closing == string_view::npos) {
            cursor_.moveTo(opening);
            cursor_.fail("expected '\"' at the end of this quoted text");
        }
        const string_view text = cursor_.readTo(closing);
        cursor_.advance();
        return text;
    }

    // Two quotes without two closing ones are an empty text.
    string_view readDoublyQuoted() {
        cursor_.advance(2);
        if (cursor_.atEnd() || contains(";,)", cursor_.peek())) return {};
        const std::size_t closing = findClosing("\"\"");
        if (closing == string_view::npos) return {};
        const string_view text = cursor_.readTo(closing);
        cursor_.advance(2);
        return text;
    }

    // Quotes inside the text are part of it, unless the operand could end after them.
    std::size_t findClosing(string_view frame) const {
        std::size_t found = cursor_.text().find(frame, cursor_.offset());
        while (found != string_view::npos && !operandMayEndAt(found + frame.size())) {
            found = cursor_.text().find(frame, found + 1);
        }
        return found;
    }

    bool operandMayEndAt(std::size_t offset) const {
        Cursor ahead = cursor_;
        ahead.moveTo(offset);
        ahead.skipBlanks();
        return ahead.atEnd() || contains(";,)+-*/=!<>", ahead.peek());
    }

    Cursor cursor_;
    int depth_ = 0;
};

}  // namespace

std::unique_ptr<const Program> parseProgram(std::string_view text) {
    auto program = std::make_unique<Program>(text);
    program->statements = ExpressionParser(program->text).parse();
    return program;
}

}  // namespace cobalt
