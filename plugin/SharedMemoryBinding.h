#pragma once

#include <cstdint>
#include <string>

namespace intake {

/// The shared-memory variable that an instance writes its answers to. Shared by the instance and
/// whoever is inside of a call, which may be the end of the instance; host's thread. Unset until a
/// memory and a name are chosen.
class SharedMemoryBinding {
public:
    enum Report : int32_t { DONE = 0, NO_MEMORY = -1, NO_NAME = -2 };

    /// Chooses the memory: 0 of the local scene, 1 global, 2 distributed, any other none.
    void setMemory(int32_t type);

    /// Chooses the variable and makes sure that it exists. An empty name keeps the old one.
    Report setName(const std::string& name);

    /// Sets the variable to a text.
    Report write(const char* text) const;

private:
    int32_t memory_ = -1;
    std::string name_;
};

}  // namespace intake
