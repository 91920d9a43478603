#include "platform/linux/odbc/driver_library.h"

#include <dlfcn.h>
#include <odbcinst.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace intake {

namespace {

std::string_view trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(" {");
    const size_t last = text.find_last_not_of(" }");
    return first == std::string_view::npos ? "" : text.substr(first, last - first + 1);
}

bool isNamed(std::string_view key, std::string_view name) {
    return key.size() == name.size() && strncasecmp(key.data(), name.data(), name.size()) == 0;
}

/// The value of a key, as far as names of drivers and data sources go: without quoted semicolons.
std::string valueOf(std::string_view name, std::string_view connectionString) {
    while (!connectionString.empty()) {
        const std::string_view property = connectionString.substr(0, connectionString.find(';'));
        connectionString.remove_prefix(std::min(property.size() + 1, connectionString.size()));
        const size_t equals = property.find('=');
        if (equals != std::string_view::npos &&
            isNamed(trimmed(property.substr(0, equals)), name)) {
            return std::string(trimmed(property.substr(equals + 1)));
        }
    }
    return "";
}

/// What an ini file of unixODBC says; empty when it says nothing.
std::string profileValue(const std::string& section, const char* key, const char* file) {
    std::array<char, 1024> value{};
    if (!section.empty()) {
        SQLGetPrivateProfileString(section.c_str(), key, "", value.data(),
                                   static_cast<int>(value.size()), file);
    }
    return value.data();
}

std::string libraryOf(const std::string& driver) {
    for (const char* const key : {"Driver64", "Driver"}) {
        std::string library = profileValue(driver, key, "odbcinst.ini");
        if (!library.empty()) {
            return library;
        }
    }
    return driver;
}

/// Where Debian's packages put drivers: beside the driver manager.
std::string folderOfDrivers() {
    Dl_info manager{};
    if (dladdr(reinterpret_cast<void*>(&SQLGetPrivateProfileString), &manager) == 0) {
        return "";
    }
    const std::string path = manager.dli_fname;
    return path.substr(0, path.rfind('/') + 1) + "odbc/";
}

bool load(const std::string& path) {
    return dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL) != nullptr;
}

bool loadFromAnywhere(const std::string& library) {
    if (library.find('/') != std::string::npos) {
        return load(library);
    }
    return load(folderOfDrivers() + library) || load(library);
}

}  // namespace

std::string settingOf(const std::string& connectionString, const char* key) {
    const std::string value = valueOf(key, connectionString);
    return value.empty() ? profileValue(valueOf("DSN", connectionString), key, "odbc.ini") : value;
}

std::string driverLibrary(const std::string& connectionString) {
    const std::string driver = settingOf(connectionString, "Driver");
    return driver.empty() ? "" : libraryOf(driver);
}

std::optional<std::string> loadDriver(const std::string& connectionString) {
    const std::string driver = settingOf(connectionString, "Driver");
    if (driver.empty() || loadFromAnywhere(libraryOf(driver))) {
        return std::nullopt;
    }
    return "The ODBC driver \"" + driver + "\" cannot be loaded: " + dlerror();
}

}  // namespace intake
