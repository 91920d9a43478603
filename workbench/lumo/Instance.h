#pragma once

// One instance of the plugin on a container of the scene: its record and the calls into it.
// Owned by the command that placed it; lives no longer than its Plugin and its Host. Host's thread.

#include <cstdint>
#include <string>

#include "workbench/lumo/Host.h"
#include "workbench/lumo/Plugin.h"
#include "workbench/lumo/Record.h"

namespace lumo {

class Instance {
public:
    /// Places an instance with a record of defaults; the plugin does not hear of it yet.
    Instance(Host& host, const Plugin& plugin, std::string name);

    /// Lets the plugin clean the instance up.
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    const std::string& name() const { return name_; }
    Record& record() { return record_; }
    const Record& record() const { return record_; }

    /// The record is new, not restored from a scene.
    void create() { call(plugin_.initFunction); }
    void load() { call(plugin_.load); }
    void afterLoad() { call(plugin_.afterLoad); }
    void execAction(int32_t action) { call(plugin_.execAction, action); }
    void execPerField() { call(plugin_.execPerField); }
    void changed(int32_t hostIndex) { call(plugin_.changed, hostIndex); }
    void guiStatus() { call(plugin_.guiStatus); }
    void newGeometry(int32_t reason) { call(plugin_.newGeometry, reason); }
    void dispatch(int32_t code, void* data, void** out) {
        call(plugin_.dispatcher, code, data, out);
    }

private:
    template <typename Function, typename... Arguments>
    void call(Function function, Arguments... arguments) {
        host_.runningContainer = container_;
        function(record_.data(), arguments...);
        host_.runningContainer = noObject;
    }

    Host& host_;
    const Plugin& plugin_;
    std::string name_;
    int32_t container_;
    Record record_;
};

}  // namespace lumo
