#include "workbench/cli/probe_settings.h"

#include <array>

#include "workbench/cli/received_text.h"

namespace workbench {

namespace {

/// The texts that reach the reader as the plugin's command leaves them.
constexpr std::array unescaped{&probe::Settings::fromRow, &probe::Settings::numRows,
                               &probe::Settings::proxyUrl, &probe::Settings::customHeaders};

}  // namespace

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
    settings.typed = {{"proxyUrl", settings.proxyUrl}, {"customHeaders", settings.customHeaders}};
    for (const auto text : unescaped)
        settings.*text = receivedText(settings.*text);
    // Of a worksheet the sheet and the fields arrive in a query.
    if (settings.queryMode != probe::QueryType::Excel)
        settings.sheet = receivedText(settings.sheet);
    return settings;
}

}  // namespace workbench
