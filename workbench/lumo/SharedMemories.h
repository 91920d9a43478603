#pragma once

// The shared memories of the host: named texts that scripts and other programs read.
// Owned by the Host; host's thread only.

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/lumo/Objects.h"

namespace lumo {

class SharedMemory {
public:
    SharedMemory(std::string name, int32_t object) : name_(std::move(name)), object_(object) {}

    const std::string& name() const { return name_; }
    int32_t object() const { return object_; }

    /// The value of that key, or null.
    std::string* find(std::string_view key);

    /// Adds an empty value unless there is one already.
    void create(std::string_view key);

    /// The keys and their values, in the order in which they were added.
    const std::deque<std::pair<std::string, std::string>>& values() const { return values_; }

private:
    std::string name_;
    int32_t object_;
    std::deque<std::pair<std::string, std::string>>
        values_;  // a deque, so that values stay in place
};

class SharedMemories {
public:
    SharedMemories(Objects& objects, int32_t scene);

    SharedMemory scene;
    SharedMemory global;
    SharedMemory distributed;

    /// The memory with that identity, or null.
    SharedMemory* find(int32_t object);

    /// Sets a value that exists; anything else is ignored, as the host does.
    void set(int32_t object, std::string_view key, std::string_view text);

    /// The value that was set last since the last call of this, or null.
    const std::string* takeLastSet() { return std::exchange(lastSet_, nullptr); }

    std::array<const SharedMemory*, 3> all() const { return {&scene, &global, &distributed}; }

private:
    const std::string* lastSet_ = nullptr;
};

}  // namespace lumo
