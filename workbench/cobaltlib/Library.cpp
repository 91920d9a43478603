#include "workbench/cobaltlib/Library.h"

#include <cassert>

namespace cobaltlib {

namespace {

Library* theLibrary = nullptr;

}  // namespace

Library::Library(tracing::Trace& hostTrace, const int32_t& hostScene,
                 const int32_t& calledContainer)
    : trace(hostTrace), scene(hostScene), runningContainer(calledContainer) {
    assert(theLibrary == nullptr);
    theLibrary = this;
}

Library::~Library() {
    theLibrary = nullptr;
}

Library& Library::current() {
    assert(theLibrary != nullptr);
    return *theLibrary;
}

}  // namespace cobaltlib
