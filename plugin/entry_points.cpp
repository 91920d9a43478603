// The functions that the host calls. Each refreshes the instance's view of its parameters and
// forwards; no exception leaves them. All run on the host's thread.

#include <exception>

#include "host/linkage.h"
#include "host/lumo.h"
#include "plugin/HostRecord.h"
#include "plugin/Intake.h"
#include "plugin/binding.h"
#include "plugin/host_events.h"
#include "plugin/library.h"
#include "plugin/visibility.h"

using intake::HostRecord;
using intake::Intake;

namespace {

void report(const char* entryPoint, const char* separator, const char* reason) noexcept {
    try {
        _lumoprintf("Intake: %s failed%s%s\n", entryPoint, separator, reason);
    } catch (...) {
        // The host's console is out of order; there is nobody left to tell.
    }
}

template <class Body>
void guarded(const char* entryPoint, Body body) noexcept {
    try {
        body();
    } catch (const intake::InstanceGone&) {
        return;
    } catch (const std::exception& failure) {
        report(entryPoint, ": ", failure.what());
    } catch (...) {
        report(entryPoint, "", "");
    }
}

/// Calls `body` with the record's instance, if there is one, after showing it its parameters.
template <class Body>
void withInstance(HostRecord* record, Body body) {
    if (Intake* const instance = intake::instanceOf(*record)) {
        body(*instance);
    }
}

}  // namespace

PLUGIN_API void PLUGIN_INIT(void* /*hostValues*/) {
    guarded("PLUGIN_INIT", [] { intake::registerLibrary(); });
}

PLUGIN_API void PLUGIN_INIT_FUNCTION(HostRecord* record) {
    record->Magic = intake::MAGIC_CREATED;
    record->instance = nullptr;
}

PLUGIN_API void PLUGIN_LOAD(HostRecord* record) {
    guarded("PLUGIN_LOAD", [=] { intake::bind(*record); });
}

PLUGIN_API void PLUGIN_AFTER_LOAD(HostRecord* record) {
    guarded("PLUGIN_AFTER_LOAD", [=] { intake::finishInitialisation(*record); });
}

PLUGIN_API void PLUGIN_CLEANUP_FUNCTION(HostRecord* record) {
    guarded("PLUGIN_CLEANUP_FUNCTION", [=] {
        if (record->Magic == intake::MAGIC_BOUND) {
            withInstance(record, [=](Intake& instance) {
                instance.cleanup();
                record->instance = nullptr;
                delete &instance;
            });
        }
    });
}

PLUGIN_API void PLUGIN_EXEC_ACTION(HostRecord* record, int32_t action) {
    guarded("PLUGIN_EXEC_ACTION", [=] {
        withInstance(record,
                     [=](Intake& instance) { instance.onExecAction(action, instance.params); });
    });
}

PLUGIN_API void PLUGIN_EXEC_PER_FIELD(HostRecord* record) {
    guarded("PLUGIN_EXEC_PER_FIELD", [=] {
        intake::checkState(*record);
        intake::finishInitialisation(*record);
        withInstance(record, [](Intake& instance) { instance.onExecPerField(); });
    });
}

PLUGIN_API void PLUGIN_DISPATCHER_CALLBACK(HostRecord* record, int32_t code, void* data,
                                           void** out) {
    guarded("PLUGIN_DISPATCHER_CALLBACK", [=] { intake::dispatch(*record, code, data, out); });
}

PLUGIN_API void PLUGIN_CHANGED_CALLBACK(HostRecord* record, int32_t hostIndex) {
    guarded("PLUGIN_CHANGED_CALLBACK", [=] {
        intake::checkState(*record);
        intake::parameterChanged(*record, hostIndex);
    });
}

PLUGIN_API void PLUGIN_GUI_STATUS(HostRecord* record) {
    guarded("PLUGIN_GUI_STATUS", [=] {
        intake::checkState(*record);
        intake::callHostFor(record->instance, [=] { intake::showBindingParameters(*record); });
        withInstance(record, [](Intake& instance) { instance.onGuiStatus(); });
    });
}

PLUGIN_API void PLUGIN_NEW_GEOM(HostRecord* record, int32_t reason) {
    guarded("PLUGIN_NEW_GEOM", [=] {
        intake::checkState(*record);
        withInstance(record, [=](Intake& instance) { instance.onBuildGeometry(reason); });
    });
}
