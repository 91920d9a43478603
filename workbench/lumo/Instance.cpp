#include "workbench/lumo/Instance.h"

#include <utility>

namespace lumo {

Instance::Instance(Host& host, const Plugin& plugin, std::string name)
    : host_(host),
      plugin_(plugin),
      name_(std::move(name)),
      container_(host.objects.add(name_, host.scene)),
      record_(host.parameters) {}

Instance::~Instance() {
    call(plugin_.cleanup);
}

}  // namespace lumo
