#include "workbench/cobaltlib/library_output.h"

#include <string>

#include "host/cobalt.h"
#include "workbench/cobaltlib/Library.h"

namespace cobaltlib {

void report(std::string_view what, const cobalt::ScriptError& error) {
    const std::string line = std::string(what) + ": line " + std::to_string(error.line) +
                             ", column " + std::to_string(error.column) + ": " + error.message;
    Library::current().print("%s\n", line.c_str());
}

}  // namespace cobaltlib

namespace {

cobaltlib::Library& library() {
    return cobaltlib::Library::current();
}

// A function pointer has no name at run time; the host's own can be told by their addresses.
template <typename Function>
tracing::Bare nameOf(Function given, Function known, const char* name) {
    return {given == known ? name : "function"};
}

}  // namespace

extern "C" {

void initCobalt() {
    library().trace.call("initCobalt");
}

int32_t getInitCB() {
    library().trace.call("getInitCB");
    return library().initialisationPending;
}

void setInitCB(int32_t pending) {
    library().trace.call("setInitCB", pending);
    library().initialisationPending = pending;
}

void DataDebug(int32_t level) {
    library().trace.call("DataDebug", level);
}

void DataSetPrintfFunction(int32_t (*print)(const char* format, ...)) {
    library().trace.call("DataSetPrintfFunction", nameOf(print, &_lumoprintf, "_lumoprintf"));
    library().print = print;
}

void DataSetWPrintfFunction(int32_t (*print)(const wchar_t* format, ...)) {
    library().trace.call("DataSetWPrintfFunction", nameOf(print, &_lumowprintf, "_lumowprintf"));
}

void DataSetVPrintfFunction(int32_t (*print)(const char* format, va_list arguments)) {
    library().trace.call("DataSetVPrintfFunction", nameOf(print, &_lumovprintf, "_lumovprintf"));
}

void DataSetVWPrintfFunction(int32_t (*print)(const wchar_t* format, va_list arguments)) {
    library().trace.call("DataSetVWPrintfFunction", nameOf(print, &_lumovwprintf, "_lumovwprintf"));
}

}  // extern "C"
