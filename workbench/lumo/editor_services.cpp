// The editor calls of host/lumo.h.

#include "host/lumo.h"
#include "workbench/lumo/Host.h"

namespace {

lumo::Host& host() {
    return lumo::Host::current();
}

}  // namespace

extern "C" {

void evSendGuiParameterShow(const char* name, int32_t shown) {
    host().trace.call("evSendGuiParameterShow", name, shown);
    host().editor.show(name, shown != 0);
}

void evSendGuiRefresh() {
    host().trace.call("evSendGuiRefresh");
    host().editor.refresh();
}

}  // extern "C"
