// A plugin that answers a load with what its parameters say, so that every answer can be had: the
// console variable gets `console`, the store executes `script` (or, in Shared Memory mode, the
// scene's memory gets it under "VAR" when `bound` is set). It answers `answers` times; from the
// second answer on the console variable gets `nextConsole`. With a field "Calls" in the store, it
// writes there how it was called so far.

#include <cstdint>
#include <cstdio>
#include <string>

#include "host/cobalt.h"
#include "host/lumo.h"

namespace {

struct AnsweringRecord {
    int32_t queryMode;
    int32_t mode;
    char* varsPrefix;
    int32_t show_data;
    char* filename;
    char* console;
    char* script;
    int32_t bound;
    int32_t answers;
    char* nextConsole;
    char* calls;
};

Cobalt* store() {
    return IDataHandlerImpl::getCobalt(_api__get_sceneid_local(), false);
}

void note(AnsweringRecord* record, const std::string& call) {
    const std::string calls = record->calls;
    const std::string all = calls.empty() ? call : calls + ", " + call;
    record->calls[all.copy(record->calls, 511)] = '\0';
}

void registerText(const char* name) {
    evRegisterParameterString(name, name, "", 80, 512, 0);
}

void store(const AnsweringRecord& record) {
    const int32_t memory = _api__scene_get_shared_script_memory(_api__get_sceneid_local());
    const LumoVariant value{LumoVariant::TEXT, record.script};
    _api__shared_script_memory_create_key(memory, "VAR");
    _api__shared_script_memory_set_value(memory, "VAR", &value);
}

}  // namespace

PLUGIN_API void PLUGIN_INIT(void*) {
    static const char* const queries[] = {"EXCEL", "SQL", "XML", "JSON", nullptr};
    static const char* const modes[] = {"T", "A", "S", "F", "M", nullptr};
    evRegisterParameterRadio("queryMode", "", 3, queries);
    evRegisterParameterRadio("mode", "", 0, modes);
    registerText("varsPrefix");
    evRegisterParameterBool("show_data", "", 0);
    registerText("filename");
    registerText("console");
    registerText("script");
    evRegisterParameterBool("bound", "", 0);
    evRegisterParameterInt("answers", "", 1, 0, 9);
    registerText("nextConsole");
    registerText("calls");
}

PLUGIN_API void PLUGIN_INIT_FUNCTION(AnsweringRecord* record) {
    note(record, "created");
}
PLUGIN_API void PLUGIN_LOAD(AnsweringRecord* record) {
    note(record, "loaded");
}
PLUGIN_API void PLUGIN_AFTER_LOAD(AnsweringRecord* record) {
    note(record, "after load");
}
PLUGIN_API void PLUGIN_CLEANUP_FUNCTION(AnsweringRecord*) {
    std::puts("cleaned up");
}
PLUGIN_API void PLUGIN_EXEC_ACTION(AnsweringRecord* record, int32_t action) {
    note(record, "action " + std::to_string(action));
    std::puts("fetching");
}

PLUGIN_API void PLUGIN_EXEC_PER_FIELD(AnsweringRecord* record) {
    note(record, "frame");
    if (record->answers == 0) return;
    --record->answers;
    if (DataField* calls = store()->findField("Calls", 0, 1)) calls->setValue(record->calls);
    if (record->show_data != 0) {
        const std::string name = std::string(record->varsPrefix) + "READER_CONSOLE";
        if (DataField* field = store()->findField(name.c_str(), 0, 1))
            field->setValue(record->console);
        record->console = record->nextConsole;
    }
    if (record->mode != 4) {
        store()->executeScript(record->script, 0);
    } else if (record->bound != 0) {
        store(*record);
    }
}

PLUGIN_API void PLUGIN_DISPATCHER_CALLBACK(AnsweringRecord*, int32_t, void*, void**) {}
PLUGIN_API void PLUGIN_CHANGED_CALLBACK(AnsweringRecord* record, int32_t index) {
    note(record, "changed " + std::to_string(index) + " to " + record->filename);
}
PLUGIN_API void PLUGIN_GUI_STATUS(AnsweringRecord*) {}
PLUGIN_API void PLUGIN_NEW_GEOM(AnsweringRecord*, int32_t) {}
