#pragma once

#include <cstdint>
#include <filesystem>

#include "workbench/lumo/PluginLibrary.h"

namespace lumo {

/// A loaded plugin: its entry points, by the names under which it exports them. Owned by main;
/// outlives its instances. Host's thread only. See Instance for what each one is called with.
class Plugin {
public:
    /// Loads the library, finds the entry points and lets the plugin register itself with the
    /// current Host. Throws std::runtime_error when any of it fails.
    explicit Plugin(const std::filesystem::path& file);

    using OnRecord = void (*)(void* record);
    using OnRecordWithNumber = void (*)(void* record, int32_t number);
    using OnDispatch = void (*)(void* record, int32_t code, void* data, void** out);

    const OnRecord initFunction;
    const OnRecord load;
    const OnRecord afterLoad;
    const OnRecord cleanup;
    const OnRecordWithNumber execAction;
    const OnRecord execPerField;
    const OnDispatch dispatcher;
    const OnRecordWithNumber changed;
    const OnRecord guiStatus;
    const OnRecordWithNumber newGeometry;

private:
    explicit Plugin(const PluginLibrary& library);
};

}  // namespace lumo
