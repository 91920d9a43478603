#include "workbench/lumo/Host.h"

#include <cassert>

namespace lumo {

namespace {

Host* theHost = nullptr;

}  // namespace

Host::Host() : scene(objects.add("scene", noObject)), memories(objects, scene) {
    assert(theHost == nullptr);
    theHost = this;
}

Host::~Host() {
    theHost = nullptr;
}

Host& Host::current() {
    assert(theHost != nullptr);
    return *theHost;
}

}  // namespace lumo
