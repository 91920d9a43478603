#include "workbench/lumo/Record.h"

#include <cstring>

namespace lumo {

Record::Record(const ParameterTable& parameters)
    : parameters_(parameters), layout_(parameters), block_(layout_.size()) {
    for (int32_t index = 1; index <= parameters.size(); ++index)
        setDefault(index);
}

void Record::setDefault(int32_t hostIndex) {
    const Parameter& parameter = parameters_.at(hostIndex);
    if (isText(parameter)) {
        addBuffer(hostIndex, parameter.capacity);
        setText(hostIndex, parameter.initialText);
    } else if (parameter.kind == ParameterKind::Float) {
        setNumber(hostIndex, static_cast<float>(parameter.initialNumber));
    } else if (hasValue(parameter)) {
        setInteger(hostIndex, static_cast<int32_t>(parameter.initialNumber));
    }
}

void Record::addBuffer(int32_t hostIndex, int32_t capacity) {
    buffers_.push_back(std::make_unique<char[]>(static_cast<std::size_t>(capacity)));
    write<char*>(hostIndex, buffers_.back().get());
}

template <typename Value>
Value Record::read(int32_t hostIndex) const {
    Value value;
    std::memcpy(&value, block_.data() + layout_.offset(hostIndex), sizeof value);
    return value;
}

template <typename Value>
void Record::write(int32_t hostIndex, Value value) {
    std::memcpy(block_.data() + layout_.offset(hostIndex), &value, sizeof value);
}

std::string_view Record::text(int32_t hostIndex) const {
    return read<const char*>(hostIndex);
}

void Record::setText(int32_t hostIndex, std::string_view text) {
    char* buffer = read<char*>(hostIndex);
    text.copy(buffer, text.size());
    buffer[text.size()] = '\0';
}

int32_t Record::integer(int32_t hostIndex) const {
    return read<int32_t>(hostIndex);
}
void Record::setInteger(int32_t hostIndex, int32_t value) {
    write(hostIndex, value);
}
float Record::number(int32_t hostIndex) const {
    return read<float>(hostIndex);
}
void Record::setNumber(int32_t hostIndex, float value) {
    write(hostIndex, value);
}

}  // namespace lumo
