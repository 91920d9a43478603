#pragma once

#include <filesystem>

namespace lumo {

/// A plugin's dynamic library. It resolves its imports from this executable and stays loaded until
/// the process ends, since its worker threads may. Copies name the same library.
class PluginLibrary {
public:
    /// Loads the file; throws std::runtime_error with the system's reason when it cannot.
    explicit PluginLibrary(const std::filesystem::path& file);

    /// An exported function. Throws std::runtime_error when the library has none of that name.
    template <typename Function>
    Function entryPoint(const char* name) const {
        return reinterpret_cast<Function>(address(name));
    }

    /// How the system ends the name of a library, for example ".so".
    static const char* extension();

private:
    using Address = void (*)();
    Address address(const char* name) const;

    std::filesystem::path file_;
    void* handle_;
};

}  // namespace lumo
