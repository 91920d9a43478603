#pragma once

#include <optional>
#include <string>

#include "workbench/cobalt/Value.h"

namespace cobalt {

/// What a step of an expression works on: a text or a number, and whether it counts as a number.
struct Operand {
    Value value;
    std::optional<double> number;

    bool isEmpty() const { return !number && value.text().empty(); }

    static Operand ofNumber(double number);   ///< throws OperandError unless it is finite
    static Operand ofText(std::string text);  ///< is text, whatever it looks like
    static Operand ofData(Value value);       ///< a text that reads as a number counts as one
};

/// Why operands do not go together, in words.
struct OperandError {
    std::string message;
};

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
};

/// Beside a number, an empty operand counts as 0. Throws OperandError.
Operand combine(Operator op, const Operand& left, const Operand& right);
Operand negate(const Operand& operand);

}  // namespace cobalt
