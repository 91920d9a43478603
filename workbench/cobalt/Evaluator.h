#pragma once

#include <vector>

#include "workbench/cobalt/Expression.h"
#include "workbench/cobalt/Program.h"

namespace cobalt {

class Store;

/// Carries out the statements of a program against a store. Lives for one execution.
class Evaluator {
public:
    Evaluator(Store& store, const CommandFunction& command, const MacroQuery& macro)
        : store_(store), command_(command), macro_(macro) {}

    /// Throws ParseFailure, with the place of the step that failed; nothing is assigned then.
    void execute(const Statement& statement);

private:
    Operand calculate(const Calculation& calculation);
    void carryOut(const Instruction& instruction);
    Operand readField(std::string_view name) const;
    Operand readEntry(std::string_view name, std::string_view key) const;
    Operand send(const Operand& command) const;
    Operand pop();

    Store& store_;
    const CommandFunction& command_;
    const MacroQuery& macro_;
    std::vector<Operand> stack_;
};

}  // namespace cobalt
