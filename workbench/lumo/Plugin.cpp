#include "workbench/lumo/Plugin.h"

#include <stdexcept>

#include "workbench/lumo/Host.h"

namespace lumo {

Plugin::Plugin(const std::filesystem::path& file) : Plugin(PluginLibrary(file)) {
    // Its record would have room for nothing. What kept it from registering it has printed itself.
    if (Host::current().parameters.size() == 0) {
        throw std::runtime_error("The plugin " + file.string() + " has registered no parameters");
    }
}

Plugin::Plugin(const PluginLibrary& library)
    : initFunction(library.entryPoint<OnRecord>("PLUGIN_INIT_FUNCTION")),
      load(library.entryPoint<OnRecord>("PLUGIN_LOAD")),
      afterLoad(library.entryPoint<OnRecord>("PLUGIN_AFTER_LOAD")),
      cleanup(library.entryPoint<OnRecord>("PLUGIN_CLEANUP_FUNCTION")),
      execAction(library.entryPoint<OnRecordWithNumber>("PLUGIN_EXEC_ACTION")),
      execPerField(library.entryPoint<OnRecord>("PLUGIN_EXEC_PER_FIELD")),
      dispatcher(library.entryPoint<OnDispatch>("PLUGIN_DISPATCHER_CALLBACK")),
      changed(library.entryPoint<OnRecordWithNumber>("PLUGIN_CHANGED_CALLBACK")),
      guiStatus(library.entryPoint<OnRecord>("PLUGIN_GUI_STATUS")),
      newGeometry(library.entryPoint<OnRecordWithNumber>("PLUGIN_NEW_GEOM")) {
    using Init = void (*)(void* hostValues);
    library.entryPoint<Init>("PLUGIN_INIT")(nullptr);
}

}  // namespace lumo
