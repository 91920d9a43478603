#include "plugin/binding.h"

#include <exception>
#include <memory>

#include "host/cobalt.h"
#include "host/lumo.h"
#include "plugin/Intake.h"

namespace intake {

namespace {

constexpr const char* STORE_FUNCTION = "Cobalt";
constexpr const char* STORE_FUNCTION_PATH = "BUILT_IN*FUNCTION*Cobalt";

Intake* makeInstance() {
    try {
        return new Intake;
    } catch (const std::exception& reason) {
        _lumoprintf("Intake: no instance could be made: %s\n", reason.what());
    } catch (...) {
        _lumoprintf("Intake: no instance could be made\n");
    }
    return nullptr;
}

void prepareHandler(Intake& instance, int32_t debugLevel) {
    instance.callHost([&] { DataDebug(debugLevel); });
    instance.callHost([&] { instance.setLocalContainer(); });
    instance.callHost([&] { instance.setLocalScene(); });
    instance.callHost([&] { instance.IDataHandler::init(instance.container); });
}

/// Carries the record's binding parameters into the instance.
void applyBindingParameters(HostRecord& record, Intake& instance) {
    if (record.IsRemote != 0) {
        record.IsOther = 1;
        record.WhichOther = OTHER_IS_REMOTE;
    }
    if (record.IsOther != 0 && record.WhichOther == OTHER_IS_REMOTE) {
        instance.callHost([&] { instance.setRemoteContainer(record.RemoteContainer); });
    }
    instance.callHost([&] { instance.setNotifyOnValueChange(record.ValChangeNotify); });
    instance.IsOther = record.IsOther;
    if (record.IsOther != 0) {
        instance.WhichOther = record.WhichOther;
    }
    instance.callHost([&] { instance.setUseConvTable(record.UseConvTable); });
    if (record.UseConvTable != 0) {
        instance.callHost([&] { instance.setConvTableNmae(record.ConvTableName); });
    }
}

/// The scene must hold the data store's own function for bound fields to be served.
void ensureStoreFunction(int32_t scene) {
    if (_api__object_valid(_api__get_scene_function(scene, STORE_FUNCTION)) == 0) {
        _api__scene_create_function(scene, STORE_FUNCTION_PATH);
    }
}

void bindInstance(HostRecord& record, Intake& instance) {
    prepareHandler(instance, 3);
    instance.params = &record.params;
    instance.callHost([&] { instance.initialize(); });
    applyBindingParameters(record, instance);
    instance.callHost([&] { instance.RegisterField(record.FieldName, 0); });
    instance.syncParameters();
}

void createAndRegister(HostRecord& record, int32_t flag) {
    const Intake* const former = record.instance;
    std::unique_ptr<Intake> made(makeInstance());
    if (record.instance != former) {
        return;  // the host has bound one meanwhile
    }
    record.instance = made.release();
    if (record.instance == nullptr) {
        return;
    }
    Intake& instance = *record.instance;
    prepareHandler(instance, 1);
    instance.params = &record.params;
    applyBindingParameters(record, instance);
    instance.callHost([&] { instance.Register(record.FieldName, flag); });
    instance.callHost([&] { instance.initialize(); });
    instance.callHost([&] { ensureStoreFunction(instance.scene); });
}

}  // namespace

void bind(HostRecord& record) {
    record.Magic = MAGIC_BOUND;
    try {
        if (record.instance == nullptr) {
            std::unique_ptr<Intake> instance(makeInstance());
            if (record.instance == nullptr) {  // the host may have bound it meanwhile
                record.instance = instance.release();
            }
        }
        if (record.instance != nullptr) {
            bindInstance(record, *record.instance);
        }
    } catch (...) {
        setInitCB(1);
        throw;
    }
    callHostFor(record.instance, [] { setInitCB(1); });
}

void checkState(HostRecord& record) {
    const int32_t state = record.Magic;
    if (state != MAGIC_CREATED && state != MAGIC_RECREATE) {
        return;
    }
    // First of all: making the instance may fail or lead the host back here, and neither must make
    // another one with every frame.
    record.Magic = MAGIC_BOUND;
    createAndRegister(record, state == MAGIC_CREATED ? 1 : 0);
    if (Intake* const instance = instanceOf(record); state == MAGIC_RECREATE && instance) {
        instance->callHost([=] { instance->syncParameters(); });
    }
}

Intake* instanceOf(HostRecord& record) {
    if (record.instance != nullptr) {
        record.instance->params = &record.params;
    }
    return record.instance;
}

void finishInitialisation(const HostRecord& record) {
    int32_t pending = 0;
    callHostFor(record.instance, [&] { pending = getInitCB(); });
    Intake* const instance = record.instance;
    if (pending != 0 && instance != nullptr && instance->getType() != 1) {
        instance->callHost([] { initCobalt(); });
        instance->callHost([] { setInitCB(0); });
    }
}

}  // namespace intake
