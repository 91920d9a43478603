#include "workbench/lumo/Objects.h"

namespace lumo {

int32_t Objects::add(std::string_view name, int32_t owner) {
    objects_.push_back({std::string(name), owner});
    return static_cast<int32_t>(objects_.size());
}

int32_t Objects::find(std::string_view name, int32_t owner) const {
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        if (objects_[i].owner == owner && objects_[i].name == name)
            return static_cast<int32_t>(i + 1);
    }
    return noObject;
}

bool Objects::valid(int32_t object) const {
    return object >= 1 && static_cast<std::size_t>(object) <= objects_.size();
}

}  // namespace lumo
