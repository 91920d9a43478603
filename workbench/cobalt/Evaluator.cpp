#include "workbench/cobalt/Evaluator.h"

#include <string>
#include <utility>

#include "workbench/cobalt/Store.h"

namespace cobalt {

namespace {

Operand requireScalar(const Value& value, const std::string& name) {
    if (value.isScalar()) return Operand::ofData(value);
    const bool isArray = value.kind() == Kind::Array;
    throw OperandError{"expected a text or a number, but " + name + " holds " +
                       (isArray ? "a list" : "a structure")};
}

}  // namespace

void Evaluator::execute(const Statement& statement) {
    AssignedValues assigned;
    for (const Calculation& calculation : statement.values) {
        assigned.values.push_back(calculate(calculation).value);
    }
    if (!statement.target) return;
    assigned.separated = statement.separated;
    const Target& target = *statement.target;
    store_.define(target.name).assign(target, combine(target, std::move(assigned)), {});
}

Operand Evaluator::calculate(const Calculation& calculation) {
    for (const Instruction& instruction : calculation) {
        try {
            carryOut(instruction);
        } catch (const OperandError& error) {
            throw ParseFailure{instruction.offset, error.message};
        }
    }
    return pop();
}

void Evaluator::carryOut(const Instruction& instruction) {
    switch (instruction.code) {
        case Instruction::Code::PushConstant:
            stack_.push_back(instruction.constant);
            return;
        case Instruction::Code::PushField:
            stack_.push_back(readField(instruction.name));
            return;
        case Instruction::Code::PushEntry:
            stack_.push_back(readEntry(instruction.name, instruction.key));
            return;
        case Instruction::Code::Negate:
            stack_.push_back(negate(pop()));
            return;
        case Instruction::Code::Combine: {
            const Operand right = pop();
            stack_.push_back(combine(instruction.op, pop(), right));
            return;
        }
        case Instruction::Code::SendCommand:
            stack_.push_back(send(pop()));
            return;
    }
}

Operand Evaluator::readField(std::string_view name) const {
    const std::string fieldName(name);
    if (const Field* field = store_.find(name)) return requireScalar(field->value(), fieldName);
    const std::optional<std::string> text = macro_ ? macro_(fieldName) : std::nullopt;
    return text ? Operand::ofData(Value::text(*text)) : Operand();
}

Operand Evaluator::readEntry(std::string_view name, std::string_view key) const {
    const Field* field = store_.find(name);
    const Value* value = field ? field->value().entries().find(key) : nullptr;
    if (!value) return {};
    return requireScalar(*value, std::string(name) + "[" + std::string(key) + "]");
}

Operand Evaluator::send(const Operand& command) const {
    if (!command_) return {};
    return Operand::ofData(Value::text(command_(command.value.text())));
}

Operand Evaluator::pop() {
    Operand top = std::move(stack_.back());
    stack_.pop_back();
    return top;
}

}  // namespace cobalt
