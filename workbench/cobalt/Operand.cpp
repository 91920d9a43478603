#include "workbench/cobalt/Operand.h"

#include <cmath>
#include <compare>
#include <utility>

#include "workbench/cobalt/number_text.h"

namespace cobalt {

namespace {

double requireNumber(const Operand& operand) {
    if (operand.number) return *operand.number;
    if (operand.isEmpty()) return 0;
    throw OperandError{"expected a number, found the text '" + operand.value.text() + "'"};
}

// Two empty operands are texts.
bool areNumbers(const Operand& left, const Operand& right) {
    const bool eitherIsText =
        (!left.number && !left.isEmpty()) || (!right.number && !right.isEmpty());
    return !eitherIsText && (left.number || right.number);
}

Operand add(const Operand& left, const Operand& right) {
    if (!areNumbers(left, right)) return Operand::ofText(left.value.text() + right.value.text());
    return Operand::ofNumber(requireNumber(left) + requireNumber(right));
}

Operand divide(const Operand& left, const Operand& right) {
    const double divisor = requireNumber(right);
    if (divisor == 0) throw OperandError{"division by zero"};
    return Operand::ofNumber(requireNumber(left) / divisor);
}

std::partial_ordering compare(const Operand& left, const Operand& right) {
    if (areNumbers(left, right)) return requireNumber(left) <=> requireNumber(right);
    return left.value.text() <=> right.value.text();
}

Operand truth(bool holds) {
    return Operand::ofNumber(holds ? 1 : 0);
}

}  // namespace

Operand Operand::ofNumber(double number) {
    if (!std::isfinite(number)) throw OperandError{"the result is too large for a number"};
    return {Value::number(number), number};
}

Operand Operand::ofText(std::string text) {
    return {Value::text(std::move(text)), std::nullopt};
}

Operand Operand::ofData(Value value) {
    const std::optional<double> number = parseNumber(value.text());
    return {std::move(value), number};
}

Operand combine(Operator op, const Operand& left, const Operand& right) {
    switch (op) {
        case Operator::Add:
            return add(left, right);
        case Operator::Subtract:
            return Operand::ofNumber(requireNumber(left) - requireNumber(right));
        case Operator::Multiply:
            return Operand::ofNumber(requireNumber(left) * requireNumber(right));
        case Operator::Divide:
            return divide(left, right);
        case Operator::Equal:
            return truth(std::is_eq(compare(left, right)));
        case Operator::NotEqual:
            return truth(std::is_neq(compare(left, right)));
        case Operator::Less:
            return truth(std::is_lt(compare(left, right)));
        case Operator::LessOrEqual:
            return truth(std::is_lteq(compare(left, right)));
        case Operator::Greater:
            return truth(std::is_gt(compare(left, right)));
        case Operator::GreaterOrEqual:
            return truth(std::is_gteq(compare(left, right)));
    }
    return {};
}

Operand negate(const Operand& operand) {
    return Operand::ofNumber(-requireNumber(operand));
}

}  // namespace cobalt
