#include "plugin/SharedMemoryBinding.h"

#include "host/lumo.h"

namespace intake {

namespace {

int32_t findMemory(int32_t type) {
    switch (type) {
        case 0:
            return _api__scene_get_shared_script_memory(_api__get_sceneid_local());
        case 1:
            return _api__global_get_shared_script_memory();
        case 2:
            return _api__global_get_distributed_shared_script_memory();
        default:
            return -1;
    }
}

}  // namespace

void SharedMemoryBinding::setMemory(int32_t type) {
    memory_ = findMemory(type);
}

SharedMemoryBinding::Report SharedMemoryBinding::setName(const std::string& name) {
    if (name.empty()) {
        return NO_NAME;
    }
    name_ = name;  // which each of the calls may change
    const int32_t memory = memory_;
    if (_api__shared_script_memory_has_key(memory, name.c_str()) != 0) {
        return DONE;
    }
    _api__shared_script_memory_create_key(memory, name.c_str());
    return _api__shared_script_memory_has_key(memory, name.c_str()) != 0 ? DONE : NO_MEMORY;
}

SharedMemoryBinding::Report SharedMemoryBinding::write(const char* text) const {
    if (_api__object_valid(memory_) == 0) {
        return NO_MEMORY;
    }
    if (name_.empty()) {
        return NO_NAME;
    }
    const std::string name = name_;  // telling the watchers may change it
    const LumoVariant value{LumoVariant::TEXT, text};
    _api__shared_script_memory_set_value(memory_, name.c_str(), &value);
    return DONE;
}

}  // namespace intake
