// IDataHandler, lumoPluginData and lumoDataHandler: how an instance is bound to the store of its
// scene. The workbench has one scene, no conversion tables and no remote containers; calls about
// those are traced and have no further effect.

#include "host/cobalt.h"
#include "workbench/cobaltlib/Library.h"

namespace {

cobaltlib::Library& library() {
    return cobaltlib::Library::current();
}

}  // namespace

IDataHandler::IDataHandler() : implementation_(nullptr) {}
IDataHandler::~IDataHandler() {
    library().boundFields.erase(this);
}

void IDataHandler::init(int32_t container) {
    library().trace.call("IDataHandler::init", container);
}

Cobalt* IDataHandler::getCobalt() {
    library().trace.call("IDataHandler::getCobalt");
    return &library().store;
}

DataField* IDataHandler::getField() {
    library().trace.call("IDataHandler::getField");
    return library().store.face(library().boundFields[this]);
}

void IDataHandler::setNotifyOnValueChange(int32_t on) {
    library().trace.call("IDataHandler::setNotifyOnValueChange", on);
}

void IDataHandler::setUseConvTable(int32_t on) {
    library().trace.call("IDataHandler::setUseConvTable", on);
}

void IDataHandler::setConvTableNmae(const char* name) {
    library().trace.call("IDataHandler::setConvTableNmae", name);
}

void IDataHandler::refresh() {
    library().trace.call("IDataHandler::refresh");
    const std::string name = library().boundFields[this];
    const cobalt::Field* field = library().store.core().find(name);
    auto* handler = dynamic_cast<lumoDataHandler*>(this);
    if (field == nullptr || handler == nullptr) return;
    handler->onDataChange(name.c_str(), field->value().text().c_str());
}

void lumoPluginData::setLocalContainer() {
    library().trace.call("lumoPluginData::setLocalContainer");
    container = library().runningContainer;
}

void lumoPluginData::setLocalScene() {
    library().trace.call("lumoPluginData::setLocalScene");
    scene = library().scene;
}

void lumoPluginData::setRemoteContainer(const char* name) {
    library().trace.call("lumoPluginData::setRemoteContainer", name);
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
    library().trace.call("lumoDataHandler::Register", field, flag);
    library().boundFields[this] = field;
}

void lumoDataHandler::RegisterField(const char* field, int32_t flag) {
    library().trace.call("lumoDataHandler::RegisterField", field, flag);
    library().boundFields[this] = field;
}

void lumoDataHandler::Unregister() {
    library().trace.call("lumoDataHandler::Unregister");
    library().boundFields.erase(this);
}

void lumoDataHandler::initContainer() {
    library().trace.call("lumoDataHandler::initContainer");
}

Cobalt* IDataHandlerImpl::getCobalt(int32_t scene, bool create) {
    library().trace.call("IDataHandlerImpl::getCobalt", scene, create ? 1 : 0);
    return scene == library().scene ? &library().store : nullptr;
}
