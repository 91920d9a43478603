#include "workbench/probe/NameList.h"

namespace probe {

void NameList::add(std::string_view name) {
    const bool isNext = next_ < names_.size() && names_[next_] == name;
    if (!isNext) {
        const auto [known, isNew] = positions_.try_emplace(std::string(name), names_.size());
        if (isNew) names_.emplace_back(name);
        next_ = known->second;
    }
    ++next_;
}

}  // namespace probe
