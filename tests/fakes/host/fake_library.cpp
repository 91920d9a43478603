// The free functions of the data store's library.

#include "tests/fakes/host/FakeHost.h"

DataField::~DataField() = default;
Cobalt::~Cobalt() = default;

Cobalt* IDataHandlerImpl::getCobalt(int32_t scene, bool create) {
    fakeHost().called("IDataHandlerImpl::getCobalt", scene, create);
    return &fakeHost().sceneStore;
}

void initCobalt() {
    fakeHost().called("initCobalt");
}

int32_t getInitCB() {
    fakeHost().called("getInitCB");
    return fakeHost().initPending;
}

void setInitCB(int32_t pending) {
    fakeHost().called("setInitCB", pending);
    fakeHost().initPending = pending;
}

void DataDebug(int32_t level) {
    fakeHost().called("DataDebug", level);
}

void DataSetPrintfFunction(int32_t (*print)(const char* format, ...)) {
    fakeHost().called("DataSetPrintfFunction", print);
}

void DataSetWPrintfFunction(int32_t (*print)(const wchar_t* format, ...)) {
    fakeHost().called("DataSetWPrintfFunction", print);
}

void DataSetVPrintfFunction(int32_t (*print)(const char* format, va_list arguments)) {
    fakeHost().called("DataSetVPrintfFunction", print);
}

void DataSetVWPrintfFunction(int32_t (*print)(const wchar_t* format, va_list arguments)) {
    fakeHost().called("DataSetVWPrintfFunction", print);
}
