#include "workbench/lumo/PluginLibrary.h"

#include <windows.h>

#include <stdexcept>
#include <system_error>

namespace lumo {

PluginLibrary::PluginLibrary(const std::filesystem::path& file)
    : file_(file), handle_(LoadLibraryW(std::filesystem::absolute(file).c_str())) {
    if (handle_ == nullptr) {
        const std::error_code reason(static_cast<int>(GetLastError()), std::system_category());
        throw std::runtime_error("Could not load the plugin " + file.string() + ": " +
                                 reason.message());
    }
}

PluginLibrary::Address PluginLibrary::address(const char* name) const {
    const FARPROC found = GetProcAddress(static_cast<HMODULE>(handle_), name);
    if (found == nullptr)
        throw std::runtime_error(file_.string() + " is no plugin: it does not export " + name);
    return reinterpret_cast<Address>(found);
}

const char* PluginLibrary::extension() {
    return ".dll";
}

}  // namespace lumo
