#include "workbench/cobalt/Expression.h"

#include "workbench/cobalt/Evaluator.h"
#include "workbench/cobalt/expression_parser.h"

namespace cobalt {

Expression::Expression() = default;
Expression::~Expression() = default;

std::optional<ScriptError> Expression::parse(std::string_view text) {
    program_.reset();
    try {
        program_ = parseProgram(text);
        return std::nullopt;
    } catch (const ParseFailure& failure) {
        return errorAt(text, failure.offset, failure.message);
    }
}

std::optional<ScriptError> Expression::execute(Store& store, const CommandFunction& command,
                                               const MacroQuery& macro) const {
    if (!program_) return std::nullopt;
    // A command may lead to a new action being parsed into this object while this one runs.
    const std::shared_ptr<const Program> running = program_;
    Evaluator evaluator(store, command, macro);
    try {
        for (const Statement& statement : running->statements)
            evaluator.execute(statement);
        return std::nullopt;
    } catch (const ParseFailure& failure) {
        return errorAt(running->text, failure.offset, failure.message);
    }
}

}  // namespace cobalt
