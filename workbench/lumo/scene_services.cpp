// The _api__* calls of host/lumo.h: scenes and their functions, commands, shared memories.

#include <cstdio>

#include "host/lumo.h"
#include "workbench/lumo/Host.h"

namespace {

lumo::Host& host() {
    return lumo::Host::current();
}
tracing::Trace& trace() {
    return host().trace;
}

// The function's own name ends its path: "BUILT_IN*FUNCTION*Cobalt" makes "Cobalt".
std::string_view lastPart(std::string_view path) {
    const auto star = path.rfind('*');
    return star == std::string_view::npos ? path : path.substr(star + 1);
}

}  // namespace

extern "C" {

int32_t _api__get_sceneid_local() {
    trace().call("_api__get_sceneid_local");
    return host().scene;
}

int32_t _api__get_scene_function(int32_t scene, const char* name) {
    trace().call("_api__get_scene_function", scene, name);
    return host().objects.find(name, scene);
}

int32_t _api__scene_create_function(int32_t scene, const char* path) {
    trace().call("_api__scene_create_function", scene, path);
    if (!host().objects.valid(scene)) return lumo::noObject;
    return host().objects.add(lastPart(path), scene);
}

int32_t _api__object_valid(int32_t object) {
    trace().call("_api__object_valid", object);
    return host().objects.valid(object) ? 1 : 0;
}

// There is no engine behind the workbench that could carry a command out: it is shown.
int32_t _api__lumo_send_command(const char* command, const char** answer) {
    trace().call("_api__lumo_send_command", command);
    std::fprintf(stderr, "Host command: %s\n", command);
    if (answer != nullptr) *answer = "";
    return 1;
}

int32_t _api__global_get_font_encoding() {
    trace().call("_api__global_get_font_encoding");
    ++host().fontEncodingQueries;
    return host().fontEncoding;
}

int32_t _api__scene_get_shared_script_memory(int32_t scene) {
    trace().call("_api__scene_get_shared_script_memory", scene);
    return scene == host().scene ? host().memories.scene.object() : lumo::noObject;
}

int32_t _api__global_get_shared_script_memory() {
    trace().call("_api__global_get_shared_script_memory");
    return host().memories.global.object();
}

int32_t _api__global_get_distributed_shared_script_memory() {
    trace().call("_api__global_get_distributed_shared_script_memory");
    return host().memories.distributed.object();
}

int32_t _api__shared_script_memory_has_key(int32_t memory, const char* key) {
    trace().call("_api__shared_script_memory_has_key", memory, key);
    lumo::SharedMemory* found = host().memories.find(memory);
    return found != nullptr && found->find(key) != nullptr ? 1 : 0;
}

void _api__shared_script_memory_create_key(int32_t memory, const char* key) {
    trace().call("_api__shared_script_memory_create_key", memory, key);
    if (lumo::SharedMemory* found = host().memories.find(memory)) found->create(key);
}

void _api__shared_script_memory_set_value(int32_t memory, const char* key,
                                          const LumoVariant* value) {
    trace().call("_api__shared_script_memory_set_value", memory, key, value->text);
    if (value->type == LumoVariant::TEXT) host().memories.set(memory, key, value->text);
}

}  // extern "C"
