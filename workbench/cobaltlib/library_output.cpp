#include "workbench/cobaltlib/library_output.h"

#include <string>

#include "host/cobalt.h"
#include "workbench/lumo/Host.h"

namespace cobaltlib {

void report(std::string_view what, const cobalt::ScriptError& error) {
    const std::string line = std::string(what) + ": line " + std::to_string(error.line) +
                             ", column " + std::to_string(error.column) + ": " + error.message;
    lumo::Host::current().library.print("%s\n", line.c_str());
}

}  // namespace cobaltlib

namespace {

lumo::Host& host() {
    return lumo::Host::current();
}

// A function pointer has no name at run time; the host's own can be told by their addresses.
template <typename Function>
lumo::Bare nameOf(Function given, Function known, const char* name) {
    return {given == known ? name : "function"};
}

}  // namespace

extern "C" {

void initCobalt() {
    host().trace.call("initCobalt");
}

int32_t getInitCB() {
    host().trace.call("getInitCB");
    return host().library.initialisationPending;
}

void setInitCB(int32_t pending) {
    host().trace.call("setInitCB", pending);
    host().library.initialisationPending = pending;
}

void DataDebug(int32_t level) {
    host().trace.call("DataDebug", level);
}

void DataSetPrintfFunction(int32_t (*print)(const char* format, ...)) {
    host().trace.call("DataSetPrintfFunction", nameOf(print, &_lumoprintf, "_lumoprintf"));
    host().library.print = print;
}

void DataSetWPrintfFunction(int32_t (*print)(const wchar_t* format, ...)) {
    host().trace.call("DataSetWPrintfFunction", nameOf(print, &_lumowprintf, "_lumowprintf"));
}

void DataSetVPrintfFunction(int32_t (*print)(const char* format, va_list arguments)) {
    host().trace.call("DataSetVPrintfFunction", nameOf(print, &_lumovprintf, "_lumovprintf"));
}

void DataSetVWPrintfFunction(int32_t (*print)(const wchar_t* format, va_list arguments)) {
    host().trace.call("DataSetVWPrintfFunction", nameOf(print, &_lumovwprintf, "_lumovwprintf"));
}

}  // extern "C"
