#pragma once

// How symbols cross the border between the plugin library and its host. This is the only place
// outside platform/ that asks which operating system it is built for.
//
// HOST_API     a function or class that the host supplies and the plugin imports. A target that
//              supplies the host itself (the workbench) defines HOST_IMPLEMENTATION.
// PLUGIN_API   an entry point that the plugin exports.
// HOST_OVERLOADS(first, second)   two virtual operations of one name, in the order of their slots.
//              Visual C++ gives overloads slots in the reverse order of their declarations.

#if defined(_WIN32)
#if defined(HOST_IMPLEMENTATION)
#define HOST_API __declspec(dllexport)
#else
#define HOST_API __declspec(dllimport)
#endif
#define PLUGIN_API extern "C" __declspec(dllexport)
#else
#define HOST_API __attribute__((visibility("default")))
#define PLUGIN_API extern "C" __attribute__((visibility("default")))
#endif

#if defined(_MSC_VER)
#define HOST_OVERLOADS(first, second) \
    second;                           \
    first
#else
#define HOST_OVERLOADS(first, second) \
    first;                            \
    second
#endif
