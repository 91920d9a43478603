// The data-store handler that the plugin's instances derive from.

#include "tests/fakes/host/FakeHost.h"

IDataHandler::IDataHandler() : implementation_(nullptr) {
    fakeHost().called("IDataHandler");
}

IDataHandler::~IDataHandler() {
    fakeHost().called("~IDataHandler");
}

void IDataHandler::init(int32_t container) {
    fakeHost().called("init", container);
}

Cobalt* IDataHandler::getCobalt() {
    return &fakeHost().store;
}

DataField* IDataHandler::getField() {
    return &fakeHost().field;
}

void IDataHandler::setNotifyOnValueChange(int32_t on) {
    fakeHost().called("setNotifyOnValueChange", on);
}

void IDataHandler::setUseConvTable(int32_t on) {
    fakeHost().called("setUseConvTable", on);
}

void IDataHandler::setConvTableNmae(const char* name) {
    fakeHost().called("setConvTableNmae", name);
}

void IDataHandler::refresh() {
    fakeHost().called("refresh");
}

void lumoPluginData::setLocalContainer() {
    container = fakeHost().localContainer;
    fakeHost().called("setLocalContainer");
}

void lumoPluginData::setLocalScene() {
    scene = fakeHost().localScene;
    fakeHost().called("setLocalScene");
}

void lumoPluginData::setRemoteContainer(const char* remote) {
    fakeHost().called("setRemoteContainer", remote);
}

lumoDataHandler::lumoDataHandler() = default;
lumoDataHandler::~lumoDataHandler() = default;

DataType lumoDataHandler::getFieldType() {
    fakeHost().called("getFieldType");
    return DataType::Text;
}

void lumoDataHandler::onDataChange(const char* name, const char* const*, int32_t count,
                                   int32_t flags) {
    fakeHost().called("onDataChange", name, count, flags);
}

void lumoDataHandler::onDataChange(const char* name, const char* value) {
    fakeHost().called("onDataChange", name, value);
}

void lumoDataHandler::onTypeChange(DataType) {
    fakeHost().called("onTypeChange");
}

void lumoDataHandler::onBuildGeometry(int32_t reason) {
    fakeHost().called("onBuildGeometry", reason);
}

void lumoDataHandler::onDispatcher(int32_t code, void* data, void**) {
    fakeHost().called("onDispatcher", code, static_cast<const char*>(data));
}

void lumoDataHandler::dump() {
    fakeHost().called("dump");
}

void lumoDataHandler::Register(const char* field, int32_t flag) {
    fakeHost().called("Register", field, flag);
}

void lumoDataHandler::RegisterField(const char* field, int32_t flag) {
    fakeHost().called("RegisterField", field, flag);
}

void lumoDataHandler::Unregister() {
    fakeHost().called("Unregister");
}

void lumoDataHandler::onSyncParams() {
    fakeHost().called("onSyncParams");
}

const char* lumoDataHandler::parseMacro(const char* macro) {
    fakeHost().called("parseMacro", macro);
    return fakeHost().macroText;
}

void lumoDataHandler::initContainer() {
    fakeHost().called("initContainer");
}
