#pragma once

// What the host's editor knows of the instance that is being edited: which parameters it shows, and
// whether it must draw again. Owned by the Host; host's thread only.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace lumo {

class Editor {
public:
    void show(std::string_view name, bool shown) { shown_[std::string(name)] = shown; }
    void refresh() { ++refreshes_; }

    /// Whether the parameter is shown. One that the plugin never spoke of is.
    bool isShown(std::string_view name) const {
        const auto found = shown_.find(std::string(name));
        return found == shown_.end() || found->second;
    }
    int32_t refreshes() const { return refreshes_; }

private:
    std::map<std::string, bool> shown_;
    int32_t refreshes_ = 0;
};

}  // namespace lumo
