#pragma once

// The objects of the host process that a plugin may name: the scene, its functions, the containers
// of the instances and the shared memories. An identity is given once and stays valid.
// Owned by the Host; host's thread only.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

constexpr int32_t noObject = -1;

class Objects {
public:
    /// Adds an object that belongs to `owner` (noObject for none). Returns its identity.
    int32_t add(std::string_view name, int32_t owner);

    /// The object of that name and owner, or noObject.
    int32_t find(std::string_view name, int32_t owner) const;

    bool valid(int32_t object) const;

private:
    struct Object {
        std::string name;
        int32_t owner;
    };
    std::vector<Object> objects_;  // the identity is the position, counted from 1
};

}  // namespace lumo
