#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/cobalt/Operand.h"
#include "workbench/cobalt/Target.h"

namespace cobalt {

/// One step of a calculation on a stack of operands.
struct Instruction {
    enum class Code {
        PushConstant,
        PushField,    // of that name
        PushEntry,    // of the field of that name
        Negate,       // replaces the topmost operand
        Combine,      // replaces the two topmost by the result of the operator
        SendCommand,  // replaces the topmost by the answer
    };

    Code code;
    std::size_t offset;  // in the text, for errors
    Operand constant = {};
    Operator op = Operator::Add;
    std::string_view name = {};
    std::string_view key = {};
};

/// Leaves one operand on the stack. Flat, so that long expressions need no recursion.
using Calculation = std::vector<Instruction>;

/// target = values; or, without a target, one calculation for the sake of its commands.
struct Statement {
    std::optional<Target> target;
    std::vector<Calculation> values;
    bool separated = false;  // commas stood between or after the values
};

/// A parsed expression. The statements refer to the text, so it must stay in place.
struct Program {
    explicit Program(std::string_view source) : text(source) {}
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    const std::string text;
    std::vector<Statement> statements;
};

}  // namespace cobalt
