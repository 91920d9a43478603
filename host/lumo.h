#pragma once

// The host plugin interface: what Lumo's executable supplies to the plugins that it loads.
//
// Every call is made on the host's thread. Texts are zero-terminated 8-bit strings. A text that is
// passed in belongs to the caller and is copied by the host when it must outlive the call; a text
// that the host returns belongs to the host and holds until the next call of the same function.
// Objects (scenes, scene functions, shared memories) are named by 32-bit identities; -1 is none.

#include <cstdarg>
#include <cstdint>

#include "host/linkage.h"

extern "C" {

// --- Registration. Called from PLUGIN_INIT only; the order of the parameter calls is the order of
// --- the parameters in the instance record.

/// The parameters registered from here on are stored with the scene (1) or not (0).
HOST_API void evSetPersistent(int32_t persistent);

/// Names the plugin.
HOST_API void evRegisterPlugin(const char* name);

/// The folder of the host's plugin browser that shows the plugin.
HOST_API void evRegisterPluginFolder(const char* folder);

/// The kind of plugin; 2 is a data plugin.
HOST_API void evRegisterPluginType(int32_t type);

/// The version of the data-store library that the plugin was built against.
HOST_API void evRegisterPluginVersion(int32_t major, int32_t minor, int32_t patch);

/// A text that the host's editor offers under `topic`, for example the about text under "info".
HOST_API void evRegisterInfoText(const char* topic, const char* text);

/// A text parameter. `width` is the editor field's width in characters, `maxLength` the longest
/// text in bytes, its terminator included. In the record: a pointer to the host's buffer of
/// `maxLength` bytes. The last argument is always 0.
HOST_API void evRegisterParameterString(const char* name, const char* label, const char* initial,
                                        int32_t width, int32_t maxLength, int32_t reserved);

/// A switch. In the record: a 32-bit integer, 0 or 1.
HOST_API void evRegisterParameterBool(const char* name, const char* label, int32_t initial);

/// One of several entries. `entries` ends with a null pointer. In the record: the 32-bit index.
HOST_API void evRegisterParameterRadio(const char* name, const char* label, int32_t initial,
                                       const char* const* entries);

/// A single-precision number. In the record: a 32-bit float.
HOST_API void evRegisterParameterFloat(const char* name, const char* label, float initial,
                                       float minimum, float maximum);

/// A whole number. In the record: a 32-bit integer.
HOST_API void evRegisterParameterInt(const char* name, const char* label, int32_t initial,
                                     int32_t minimum, int32_t maximum);

/// A reference to a container of the scene. In the record: a pointer to its text, the host's.
HOST_API void evRegisterParameterContainer(const char* name, const char* label,
                                           const char* initial);

/// A text of several lines; width and height of its editor field in pixels. In the record: a
/// pointer to the host's text.
HOST_API void evRegisterParameterText(const char* name, const char* initial, int32_t width,
                                      int32_t height);

/// A button. Pressing it calls PLUGIN_EXEC_ACTION with `action`. It has no value in the record.
HOST_API void evRegisterPushButton(const char* name, const char* label, int32_t action);

/// Reserves `size` bytes of the record for the plugin's own use.
HOST_API void evRegisterUserData32(int32_t size);

/// Hides the parameter that was registered last.
HOST_API void evHideParameter();

// --- The editor

/// Shows (1) or hides (0) a parameter of the instance that is being edited.
HOST_API void evSendGuiParameterShow(const char* name, int32_t shown);

/// Makes the editor read the instance's values again and draw them.
HOST_API void evSendGuiRefresh();

// --- The host's console; printf's formats

HOST_API int32_t _lumoprintf(const char* format, ...);
HOST_API int32_t _lumowprintf(const wchar_t* format, ...);
HOST_API int32_t _lumovprintf(const char* format, va_list arguments);
HOST_API int32_t _lumovwprintf(const wchar_t* format, va_list arguments);

// --- Scenes and objects

/// The scene that the running instance belongs to.
HOST_API int32_t _api__get_sceneid_local();

/// The function named `name` of a scene; -1 or an invalid object when the scene has none.
HOST_API int32_t _api__get_scene_function(int32_t scene, const char* name);

/// Adds a function to a scene, for example "BUILT_IN*FUNCTION*Cobalt". Returns the new object.
HOST_API int32_t _api__scene_create_function(int32_t scene, const char* path);

/// 1 when `object` names an object that exists, else 0.
HOST_API int32_t _api__object_valid(int32_t object);

/// Sends a command to the host. `answer`, when given, receives the answer text (the host's, valid
/// until the next command). Returns 1 when the command was carried out, else 0.
HOST_API int32_t _api__lumo_send_command(const char* command, const char** answer);

/// The host's font encoding setting: 0 ISO-8859-1, 1 UTF-8, others as the host defines them.
HOST_API int32_t _api__global_get_font_encoding();

// --- Shared memory: named values that scripts and other programs read

/// The value handed to a shared memory. A text belongs to the caller and is copied by the host.
struct LumoVariant {
    enum Type : int32_t { TEXT = 1 };
    Type type;
    const char* text;
};

/// The shared memory of one scene.
HOST_API int32_t _api__scene_get_shared_script_memory(int32_t scene);

/// The shared memory of the whole host process.
HOST_API int32_t _api__global_get_shared_script_memory();

/// The shared memory that the host distributes to its other machines.
HOST_API int32_t _api__global_get_distributed_shared_script_memory();

/// 1 when the memory holds a value named `key`, else 0.
HOST_API int32_t _api__shared_script_memory_has_key(int32_t memory, const char* key);

/// Adds an empty value named `key`.
HOST_API void _api__shared_script_memory_create_key(int32_t memory, const char* key);

/// Sets the value named `key`; its watchers are told.
HOST_API void _api__shared_script_memory_set_value(int32_t memory, const char* key,
                                                   const LumoVariant* value);

}  // extern "C"
