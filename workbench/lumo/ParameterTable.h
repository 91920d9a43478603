#pragma once

// What a plugin told its host in PLUGIN_INIT: its identity and its parameters, in order.
// Owned by the Host; filled by the ev* functions and read-only afterwards.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/lumo/Parameter.h"

namespace lumo {

struct PluginIdentity {
    std::string name;
    std::string folder;
    int32_t type = 0;
    std::string libraryVersion;
    std::string info;
};

class ParameterTable {
public:
    PluginIdentity identity;

    /// Parameters that are added from here on are stored with the scene, or not.
    void setPersistent(bool persistent) { persistent_ = persistent; }

    /// Adds a parameter; its host index is the new size().
    void add(Parameter parameter);

    /// Hides the parameter that was added last. Without one, does nothing.
    void hideLast();

    /// Host indexes count from 1.
    const Parameter& at(int32_t hostIndex) const;
    int32_t size() const { return static_cast<int32_t>(parameters_.size()); }
    std::optional<int32_t> find(std::string_view name) const;

private:
    bool persistent_ = false;
    std::vector<Parameter> parameters_;
};

}  // namespace lumo
