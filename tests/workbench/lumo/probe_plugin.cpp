// A plugin that knows the host only by its headers. It registers one parameter of every kind,
// answers each entry point by writing what it sees into the store, and changes its record.

#include <cstdint>
#include <string>

#include "host/cobalt.h"
#include "host/lumo.h"

namespace {

struct ProbeRecord {
    int32_t count;
    char* title;
    int32_t flag;
    float ratio;
    char* where;
    int32_t choice;
    char* notes;
    void* own;
    int32_t last;
};

Cobalt* store() {
    return IDataHandlerImpl::getCobalt(_api__get_sceneid_local(), false);
}

void echo(const std::string& text) {
    store()->findField("echo", 1, 1)->setValue(text.c_str());
}

std::string described(const ProbeRecord& record) {
    return std::to_string(record.count) + "|" + record.title + "|" + std::to_string(record.flag) +
           "|" + std::to_string(record.ratio) + "|" + record.where + "|" +
           std::to_string(record.choice) + "|" + record.notes + "|" +
           (record.own == nullptr ? "null" : "set") + "|" + std::to_string(record.last);
}

}  // namespace

PLUGIN_API void PLUGIN_INIT(void*) {
    static const char* const entries[] = {" One ", "Two", nullptr};
    evSetPersistent(1);
    evRegisterPlugin("Probe");
    evRegisterPluginFolder("Tests");
    evRegisterPluginType(2);
    evRegisterPluginVersion(2, 13, 6);
    evRegisterInfoText("info", "A \"probe\"\n");
    evRegisterParameterInt("count", "Count", 3, 1, 9);
    evHideParameter();
    evRegisterParameterString("title", "Title", "none", 80, 8, 0);
    evRegisterParameterBool("flag", "Flag", 1);
    evRegisterParameterFloat("ratio", "Ratio", 0.5F, 0.0F, 2.0F);
    evRegisterParameterContainer("where", "Where", "");
    evRegisterParameterRadio("choice", "Choice: ", 1, entries);
    evRegisterParameterText("notes", "two\nlines", 800, 300);
    evRegisterUserData32(8);
    evSetPersistent(0);
    evRegisterPushButton("go", "Go", 7);
    evRegisterParameterInt("last", "Last", -1, -5, 5);
}

PLUGIN_API void PLUGIN_INIT_FUNCTION(ProbeRecord* record) {
    echo("new " + described(*record));
}

PLUGIN_API void PLUGIN_LOAD(ProbeRecord* record) {
    record->own = record;
    echo("load " + described(*record));
}

PLUGIN_API void PLUGIN_AFTER_LOAD(ProbeRecord*) {
    echo("after load");
}
PLUGIN_API void PLUGIN_CLEANUP_FUNCTION(ProbeRecord*) {
    echo("cleanup");
}

PLUGIN_API void PLUGIN_EXEC_ACTION(ProbeRecord* record, int32_t action) {
    record->count = action;
    record->title[0] = 'N';
    echo("action " + std::to_string(action));
}

PLUGIN_API void PLUGIN_EXEC_PER_FIELD(ProbeRecord*) {
    lumoPluginData place;
    place.setLocalContainer();
    place.setLocalScene();
    echo("field in " + std::to_string(place.container) + " of " + std::to_string(place.scene));
}

PLUGIN_API void PLUGIN_DISPATCHER_CALLBACK(ProbeRecord* record, int32_t code, void* data,
                                           void** out) {
    *out = record;
    echo("dispatch " + std::to_string(code) + " " + static_cast<char*>(data));
}

PLUGIN_API void PLUGIN_CHANGED_CALLBACK(ProbeRecord* record, int32_t index) {
    echo("changed " + std::to_string(index) + " " + described(*record));
}

PLUGIN_API void PLUGIN_GUI_STATUS(ProbeRecord*) {
    evSendGuiParameterShow("ratio", 0);
    evSendGuiParameterShow("title", 1);
    evSendGuiRefresh();
}

PLUGIN_API void PLUGIN_NEW_GEOM(ProbeRecord*, int32_t reason) {
    echo("geometry " + std::to_string(reason));
}
