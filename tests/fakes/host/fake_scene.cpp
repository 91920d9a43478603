// Scenes, objects, commands and shared memories.

#include "host/lumo.h"
#include "tests/fakes/host/FakeHost.h"

int32_t _api__get_sceneid_local() {
    fakeHost().called("_api__get_sceneid_local");
    return fakeHost().localScene;
}

int32_t _api__get_scene_function(int32_t scene, const char* name) {
    fakeHost().called("_api__get_scene_function", scene, name);
    return fakeHost().storeFunction;
}

int32_t _api__scene_create_function(int32_t scene, const char* path) {
    fakeHost().called("_api__scene_create_function", scene, path);
    return fakeHost().storeFunction;
}

int32_t _api__object_valid(int32_t object) {
    fakeHost().called("_api__object_valid", object);
    return fakeHost().isValid(object) ? 1 : 0;
}

int32_t _api__lumo_send_command(const char* command, const char** answer) {
    fakeHost().called("_api__lumo_send_command", command);
    if (answer != nullptr) {
        *answer = "";
    }
    return 1;
}

int32_t _api__global_get_font_encoding() {
    fakeHost().called("_api__global_get_font_encoding");
    return fakeHost().fontEncoding;
}

int32_t _api__scene_get_shared_script_memory(int32_t scene) {
    fakeHost().called("_api__scene_get_shared_script_memory", scene);
    return fakeHost().sceneMemory;
}

int32_t _api__global_get_shared_script_memory() {
    fakeHost().called("_api__global_get_shared_script_memory");
    return fakeHost().globalMemory;
}

int32_t _api__global_get_distributed_shared_script_memory() {
    fakeHost().called("_api__global_get_distributed_shared_script_memory");
    return fakeHost().distributedMemory;
}

int32_t _api__shared_script_memory_has_key(int32_t memory, const char* key) {
    fakeHost().called("_api__shared_script_memory_has_key", memory, key);
    return fakeHost().sharedMemories[memory].contains(key) ? 1 : 0;
}

void _api__shared_script_memory_create_key(int32_t memory, const char* key) {
    fakeHost().called("_api__shared_script_memory_create_key", memory, key);
    if (!fakeHost().refusesKeys) {
        fakeHost().sharedMemories[memory][key] = "";
    }
}

void _api__shared_script_memory_set_value(int32_t memory, const char* key,
                                          const LumoVariant* value) {
    const std::string text = value->type == LumoVariant::TEXT ? value->text : "no text";
    fakeHost().sharedMemories[memory][key] = text;
    fakeHost().called("_api__shared_script_memory_set_value", memory, key, text);
}
