#include "workbench/cli/probe_settings.h"

namespace workbench {

probe::Settings probeSettings(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    probe::Settings settings;
    const auto number = [&](const char* name) {
        const auto index = parameters.find(name);
        return index ? record.integer(*index) : 0;
    };
    for (const probe::TextParameter& row : probe::textParameters()) {
        const auto index = parameters.find(row.name);
        if (index) settings.*row.member = record.text(*index);
    }
    for (const probe::SwitchParameter& row : probe::switchParameters())
        settings.*row.member = number(row.name) != 0;
    settings.queryMode = static_cast<probe::QueryType>(number("queryMode"));
    settings.mode = static_cast<probe::TargetMode>(number("mode"));
    settings.proxyMode = static_cast<probe::ProxyMode>(number("proxyMode"));
    settings.inputFormat = number("inputFormat");
    settings.outputFormat = number("outputFormat");
    return settings;
}

}  // namespace workbench
