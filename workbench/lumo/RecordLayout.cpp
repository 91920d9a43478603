#include "workbench/lumo/RecordLayout.h"

namespace lumo {

namespace {

struct Space {
    std::size_t size;
    std::size_t alignment;
};

Space spaceOf(const Parameter& parameter) {
    if (isText(parameter)) return {sizeof(char*), alignof(char*)};
    switch (parameter.kind) {
        case ParameterKind::PushButton:
            return {0, 1};
        case ParameterKind::UserData:
            return {static_cast<std::size_t>(parameter.userDataSize), sizeof(int64_t)};
        default:
            return {sizeof(int32_t), alignof(int32_t)};
    }
}

std::size_t roundUp(std::size_t offset, std::size_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

}  // namespace

RecordLayout::RecordLayout(const ParameterTable& parameters) {
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        const Space space = spaceOf(parameters.at(index));
        const std::size_t offset = roundUp(size_, space.alignment);
        offsets_.push_back(offset);
        size_ = offset + space.size;
    }
    size_ = roundUp(size_, sizeof(int64_t));
}

std::size_t RecordLayout::offset(int32_t hostIndex) const {
    return offsets_.at(static_cast<std::size_t>(hostIndex) - 1);
}

}  // namespace lumo
