#include "workbench/lumo/SharedMemories.h"

namespace lumo {

std::string* SharedMemory::find(std::string_view key) {
    for (auto& [name, value] : values_) {
        if (name == key) return &value;
    }
    return nullptr;
}

void SharedMemory::create(std::string_view key) {
    if (find(key) == nullptr) values_.emplace_back(key, "");
}

SharedMemories::SharedMemories(Objects& objects, int32_t sceneObject)
    : scene("scene", objects.add("shared memory", sceneObject)),
      global("global", objects.add("global shared memory", noObject)),
      distributed("distributed", objects.add("distributed shared memory", noObject)) {}

SharedMemory* SharedMemories::find(int32_t object) {
    for (SharedMemory* memory : {&scene, &global, &distributed}) {
        if (memory->object() == object) return memory;
    }
    return nullptr;
}

void SharedMemories::set(int32_t object, std::string_view key, std::string_view text) {
    SharedMemory* memory = find(object);
    std::string* value = memory != nullptr ? memory->find(key) : nullptr;
    if (value == nullptr) return;
    *value = text;
    lastSet_ = value;
}

}  // namespace lumo
