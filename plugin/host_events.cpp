#include "plugin/host_events.h"

#include <cstring>
#include <string_view>

#include "host/cobalt.h"
#include "plugin/Intake.h"
#include "plugin/binding.h"
#include "plugin/parameters.h"

namespace intake {

namespace {

enum DispatcherCode : int32_t {
    FIELD_CHOSEN = 0x4649454C,   // F I E L
    INITIALISE = 0x494E4954,     // I N I T
    GET_RECORD = 0x55444154,     // U D A T
    FIELD_CHANGED = 0x52454654,  // R E F T
};

enum HostIndex : int32_t {
    FIELD_NAME = 2,
    VAL_CHANGE_NOTIFY = 3,
    IS_REMOTE = 4,
    IS_OTHER = 5,
    WHICH_OTHER = 6,
    REMOTE_CONTAINER = 7,
    USE_CONV_TABLE = 8,
    CONV_TABLE_NAME = 9,
};

/// The library's own plugins that stand for a container of fields.
bool holdsFields(Intake& instance) {
    const std::string_view name = instance.getName();
    return name == "DataObject" || name == "DataArray";
}

void chooseField(HostRecord& record, const char* name) {
    if (record.FieldName != nullptr && name != nullptr) {
        // The host answers for the room, and may pass the buffer itself.
        std::memmove(record.FieldName, name, std::strlen(name) + 1);
    }
    if (Intake* const instance = instanceOf(record)) {
        instance->callHost([&] { instance->Register(record.FieldName, 1); });
    } else {
        bind(record);
    }
    if (record.instance != nullptr && holdsFields(*record.instance)) {
        record.instance->callHost([&] { record.instance->initContainer(); });
    }
}

void useRemoteContainer(HostRecord& record, Intake& instance) {
    record.IsOther = instance.IsOther = 1;
    record.WhichOther = instance.WhichOther = OTHER_IS_REMOTE;
    instance.setRemoteContainer(record.RemoteContainer);
}

void fieldNameChanged(const HostRecord& record, Intake& instance) {
    instance.callHost([] { DataDebug(1); });
    instance.callHost([&] { instance.Register(record.FieldName, 1); });
    if (holdsFields(instance)) {
        instance.onDispatcher(FIELD_CHANGED, nullptr, nullptr);
    }
}

void instanceParameterChanged(HostRecord& record, Intake& instance, int32_t hostIndex) {
    switch (hostIndex) {
        case FIELD_NAME:
            return fieldNameChanged(record, instance);
        case VAL_CHANGE_NOTIFY:
            instance.callHost([&] { instance.setNotifyOnValueChange(record.ValChangeNotify); });
            return instance.refresh();
        case IS_REMOTE:
            return;
        case IS_OTHER:
            instance.IsOther = record.IsOther;
            return;
        case WHICH_OTHER:
            instance.WhichOther = record.WhichOther;
            return;
        case REMOTE_CONTAINER:
            return useRemoteContainer(record, instance);
        case USE_CONV_TABLE:
            return instance.setUseConvTable(record.UseConvTable);
        case CONV_TABLE_NAME:
            return instance.setConvTableNmae(record.ConvTableName);
        default:
            if (hostIndex >= 0) {
                instance.onParameterChanged(hostIndex - FIRST_READER_PARAMETER);
            }
    }
}

}  // namespace

void dispatch(HostRecord& record, int32_t code, void* data, void** out) {
    if (code == FIELD_CHOSEN) {
        chooseField(record, static_cast<const char*>(data));
    } else if (code == INITIALISE) {
        bind(record);
    } else if (code == GET_RECORD && out != nullptr) {
        *out = &record;
    }
    if (Intake* const instance = instanceOf(record)) {
        instance->onDispatcher(code, data, out);
    }
}

void parameterChanged(HostRecord& record, int32_t hostIndex) {
    if (Intake* const instance = instanceOf(record)) {
        instanceParameterChanged(record, *instance, hostIndex);
    }
}

}  // namespace intake
