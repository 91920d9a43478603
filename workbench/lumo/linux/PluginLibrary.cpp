#include "workbench/lumo/PluginLibrary.h"

#include <dlfcn.h>

#include <stdexcept>

namespace lumo {

PluginLibrary::PluginLibrary(const std::filesystem::path& file)
    : file_(file), handle_(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr)
        throw std::runtime_error("Could not load the plugin " + file.string() + ": " + dlerror());
}

PluginLibrary::Address PluginLibrary::address(const char* name) const {
    void* found = dlsym(handle_, name);
    if (found == nullptr)
        throw std::runtime_error(file_.string() + " is no plugin: it does not export " + name);
    return reinterpret_cast<Address>(found);
}

const char* PluginLibrary::extension() {
    return ".so";
}

}  // namespace lumo
