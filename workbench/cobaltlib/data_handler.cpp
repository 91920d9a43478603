// IDataHandler, lumoPluginData and lumoDataHandler: how an instance is bound to the store of its
// scene. The workbench has one scene, no conversion tables and no remote containers; calls about
// those are traced and have no further effect.

#include "host/cobalt.h"
#include "workbench/lumo/Host.h"

namespace {

lumo::Host& host() {
    return lumo::Host::current();
}

}  // namespace

IDataHandler::IDataHandler() : implementation_(nullptr) {}
IDataHandler::~IDataHandler() {
    host().library.boundFields.erase(this);
}

void IDataHandler::init(int32_t container) {
    host().trace.call("IDataHandler::init", container);
}

Cobalt* IDataHandler::getCobalt() {
    host().trace.call("IDataHandler::getCobalt");
    return &host().store;
}

DataField* IDataHandler::getField() {
    host().trace.call("IDataHandler::getField");
    return host().store.face(host().library.boundFields[this]);
}

void IDataHandler::setNotifyOnValueChange(int32_t on) {
    host().trace.call("IDataHandler::setNotifyOnValueChange", on);
}

void IDataHandler::setUseConvTable(int32_t on) {
    host().trace.call("IDataHandler::setUseConvTable", on);
}

void IDataHandler::setConvTableNmae(const char* name) {
    host().trace.call("IDataHandler::setConvTableNmae", name);
}

void IDataHandler::refresh() {
    host().trace.call("IDataHandler::refresh");
    const std::string name = host().library.boundFields[this];
    const cobalt::Field* field = host().store.core().find(name);
    auto* handler = dynamic_cast<lumoDataHandler*>(this);
    if (field == nullptr || handler == nullptr) return;
    handler->onDataChange(name.c_str(), field->value().text().c_str());
}

void lumoPluginData::setLocalContainer() {
    host().trace.call("lumoPluginData::setLocalContainer");
    container = host().runningContainer;
}

void lumoPluginData::setLocalScene() {
    host().trace.call("lumoPluginData::setLocalScene");
    scene = host().scene;
}

void lumoPluginData::setRemoteContainer(const char* name) {
    host().trace.call("lumoPluginData::setRemoteContainer", name);
}

lumoDataHandler::lumoDataHandler() = default;
lumoDataHandler::~lumoDataHandler() = default;

DataType lumoDataHandler::getFieldType() {
    return DataType::Text;
}
void lumoDataHandler::onDataChange(const char*, const char* const*, int32_t, int32_t) {}
void lumoDataHandler::onDataChange(const char*, const char*) {}
void lumoDataHandler::onTypeChange(DataType) {}
void lumoDataHandler::onBuildGeometry(int32_t) {}
void lumoDataHandler::onDispatcher(int32_t, void*, void**) {}
void lumoDataHandler::dump() {}
void lumoDataHandler::onSyncParams() {}
const char* lumoDataHandler::parseMacro(const char*) {
    return nullptr;
}

void lumoDataHandler::Register(const char* field, int32_t flag) {
    host().trace.call("lumoDataHandler::Register", field, flag);
    host().library.boundFields[this] = field;
}

void lumoDataHandler::RegisterField(const char* field, int32_t flag) {
    host().trace.call("lumoDataHandler::RegisterField", field, flag);
    host().library.boundFields[this] = field;
}

void lumoDataHandler::Unregister() {
    host().trace.call("lumoDataHandler::Unregister");
    host().library.boundFields.erase(this);
}

void lumoDataHandler::initContainer() {
    host().trace.call("lumoDataHandler::initContainer");
}

Cobalt* IDataHandlerImpl::getCobalt(int32_t scene, bool create) {
    host().trace.call("IDataHandlerImpl::getCobalt", scene, create ? 1 : 0);
    return scene == host().scene ? &host().store : nullptr;
}
