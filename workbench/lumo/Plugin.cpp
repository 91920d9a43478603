#include "workbench/lumo/Plugin.h"

namespace lumo {

Plugin::Plugin(const std::filesystem::path& file)
    : library_(file),
      initFunction(library_.entryPoint<OnRecord>("PLUGIN_INIT_FUNCTION")),
      load(library_.entryPoint<OnRecord>("PLUGIN_LOAD")),
      afterLoad(library_.entryPoint<OnRecord>("PLUGIN_AFTER_LOAD")),
      cleanup(library_.entryPoint<OnRecord>("PLUGIN_CLEANUP_FUNCTION")),
      execAction(library_.entryPoint<OnRecordWithNumber>("PLUGIN_EXEC_ACTION")),
      execPerField(library_.entryPoint<OnRecord>("PLUGIN_EXEC_PER_FIELD")),
      dispatcher(library_.entryPoint<OnDispatch>("PLUGIN_DISPATCHER_CALLBACK")),
      changed(library_.entryPoint<OnRecordWithNumber>("PLUGIN_CHANGED_CALLBACK")),
      guiStatus(library_.entryPoint<OnRecord>("PLUGIN_GUI_STATUS")),
      newGeometry(library_.entryPoint<OnRecordWithNumber>("PLUGIN_NEW_GEOM")) {
    using Init = void (*)(void* hostValues);
    library_.entryPoint<Init>("PLUGIN_INIT")(nullptr);
}

}  // namespace lumo
