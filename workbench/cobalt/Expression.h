#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "workbench/cobalt/ScriptError.h"

namespace cobalt {

class Store;
struct Program;

/// Sends a host command and returns its answer.
using CommandFunction = std::function<std::string(const std::string& command)>;

/// The text that a name stands for when the store has no field of that name, or nothing.
using MacroQuery = std::function<std::optional<std::string>(const std::string& name)>;

/// An action: assignments and expressions, separated by semicolons, parsed once and executed many
/// times. For example: Total=Home+Away; T[0]=""none""; command("SCENE " + Name)
///
/// Operands are fields (Name, Name[key]), numbers and quoted texts. A field whose text reads as a
/// number counts as a number; one that is missing counts as 0 beside a number and as empty beside a
/// text. Operators, in rising precedence: == != < <= > >=, + -, * /, unary minus. A comparison
/// gives 1 or 0. + joins its sides when either is a text.
///
/// The name of an operand may have blanks inside, but no operator signs, brackets or quotes; the
/// target of an assignment is written as in a script. A quoted text is framed by one double quote
/// or by two and ends at the next such frame before an operator, ",", ")", ";" or the end. It is
/// never a number.
///
/// Used on one thread. An empty expression does nothing.
class Expression {
public:
    Expression();
    ~Expression();
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// Replaces the action. On an error it is empty afterwards.
    std::optional<ScriptError> parse(std::string_view text);

    /// Executes the statements in order. The first that fails, for example by dividing by zero,
    /// changes nothing and ends the action; what was done before stays done. Either function may be
    /// empty: a command then has no effect and an empty answer.
    std::optional<ScriptError> execute(Store& store, const CommandFunction& command,
                                       const MacroQuery& macro) const;

private:
    std::shared_ptr<const Program> program_;  // shared with an execution that is under way
};

}  // namespace cobalt
