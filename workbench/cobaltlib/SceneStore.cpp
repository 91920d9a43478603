#include "workbench/cobaltlib/SceneStore.h"

#include "workbench/cobaltlib/library_output.h"

DataField::~DataField() = default;
Cobalt::~Cobalt() = default;

namespace cobaltlib {

StoreField* SceneStore::face(const std::string& name) {
    cobalt::Field* field = core_.find(name);
    if (field == nullptr) return nullptr;
    return &faces_.try_emplace(name, *field, trace_).first->second;
}

DataField* SceneStore::findField(const char* name, int32_t create, int32_t local) {
    if (create != 0) core_.define(name);
    StoreObserver::LookUp lookUp{face(name), true};
    if (observer_ != nullptr) lookUp = observer_->lookedUp(name, lookUp.field);
    if (lookUp.traced) {
        trace_.call("Cobalt::findField", name, create, local);
    } else {
        trace_.takeBack("IDataHandler::getCobalt");
    }
    return lookUp.field;
}

int32_t SceneStore::executeScript(const char* text, int32_t flags) {
    trace_.call("Cobalt::executeScript", text, flags);
    const auto error =
        core_.execute(text, observer_ != nullptr ? observer_->executing() : cobalt::Origin{});
    if (error) report("The data store could not execute the script", *error);
    if (observer_ != nullptr) observer_->executed(text, error ? &*error : nullptr);
    return error ? 0 : 1;
}

}  // namespace cobaltlib
