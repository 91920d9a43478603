#include "platform/linux/odbc/driver_library.h"

#include <dlfcn.h>
#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "formats/text/ascii.h"

namespace intake {

namespace {

/// The value of a key, of which the driver manager takes the first; empty where there is none.
std::string firstValue(const ConnectionString& connection, std::string_view key) {
    const auto& properties = connection.properties();
    const auto found = std::find_if(properties.begin(), properties.end(), [key](const auto& each) {
        return equalIgnoringCase(each.key, key);
    });
    return found == properties.end() ? "" : found->value;
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

std::string settingOf(const ConnectionString& connection, const char* key) {
    const std::string value = firstValue(connection, key);
    return value.empty() ? profileValue(firstValue(connection, "DSN"), key, "odbc.ini") : value;
}

std::string driverLibrary(const ConnectionString& connection) {
    const std::string driver = settingOf(connection, "Driver");
    return driver.empty() ? "" : libraryOf(driver);
}

std::optional<std::string> loadDriver(const ConnectionString& connection) {
    const std::string driver = settingOf(connection, "Driver");
    if (driver.empty() || loadFromAnywhere(libraryOf(driver))) {
        return std::nullopt;
    }
    return "The ODBC driver \"" + driver + "\" cannot be loaded: " + dlerror();
}

}  // namespace intake
