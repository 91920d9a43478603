#include "plugin/library.h"

#include <array>
#include <cstdio>
#include <string>

#include "host/cobalt.h"
#include "host/lumo.h"
#include "plugin/Intake.h"
#include "plugin/parameters.h"

namespace intake {

namespace {

constexpr int32_t COBALT_MAJOR = 2;
constexpr int32_t COBALT_MINOR = 13;
constexpr int32_t COBALT_PATCH = 6;
constexpr int32_t COBALT_BUILD = 1473;

void routeStorePrinting() {
    DataSetPrintfFunction(_lumoprintf);
    DataSetWPrintfFunction(_lumowprintf);
    DataSetVPrintfFunction(_lumovprintf);
    DataSetVWPrintfFunction(_lumovwprintf);
}

std::string infoText(const char* about) {
    std::array<char, 128> version{};
    std::snprintf(version.data(), version.size(), "Cobalt version %d.%d.%d.%d %s\n", COBALT_MAJOR,
                  COBALT_MINOR, COBALT_PATCH, COBALT_BUILD, "");
    return std::string(version.data()).append(about);
}

}  // namespace

void registerLibrary() {
    evSetPersistent(1);
    routeStorePrinting();
    Intake plugin;
    evRegisterPlugin(plugin.getName());
    evRegisterPluginFolder(plugin.getFolder());
    evRegisterPluginType(plugin.getType());
    const std::string info = infoText(plugin.getInfo());
    evRegisterPluginVersion(COBALT_MAJOR, COBALT_MINOR, COBALT_PATCH);
    evRegisterInfoText("info", info.c_str());
    registerBindingParameters(plugin.getFlags());
    evRegisterUserData32(sizeof(Intake*));
    plugin.registerParameters();
}

}  // namespace intake
