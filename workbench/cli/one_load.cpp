#include "workbench/cli/one_load.h"

#include <algorithm>
#include <cstdio>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/source_settings.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/fetch/source_start.h"

namespace workbench {

namespace {

void applySetting(lumo::Host& host, lumo::Instance& instance, const std::string& setting) {
    const auto equals = setting.find('=');
    if (equals == std::string::npos)
        throw UsageError("--set takes NAME=VALUE, not \"" + setting + "\".");
    const std::string_view text = setting;
    instance.changed(setParameter(host.parameters, instance.record(), text.substr(0, equals),
                                  text.substr(equals + 1)));
}

/// What is wrong with a source is for an explanation to say; one behind an address cannot be a
/// workbook.
SourceSettings settingsToLoad(const lumo::Host& host, const lumo::Instance& instance,
                              const Options& options) {
    try {
        return settingsForSource(options.source, host.parameters, instance.record());
    } catch (const probe::LookFailure&) {
        if (options.command != Command::Explain) throw;
        return {"not looked at",
                {std::string("queryMode=") + (probe::isUrl(options.source) ? "JSON" : "EXCEL")}};
    }
}

bool isSet(const std::vector<std::string>& settings, std::string_view name) {
    return std::any_of(settings.begin(), settings.end(), [name](const std::string& setting) {
        return std::string_view(setting).substr(0, setting.find('=')) == name;
    });
}

}  // namespace

std::string placeInstance(lumo::Host& host, lumo::Instance& instance, const Options& options) {
    if (options.scene.empty()) {
        instance.create();
        instance.load();
        return instance.name();
    }
    const SceneFile scene = readSceneFile(options.scene);
    const StoredInstance& stored = scene.find(options.instance);
    scene.restore(stored, host.parameters, instance.record());
    instance.load();
    instance.afterLoad();
    return stored.name;
}

// What the user has set holds. It comes before looking, since it says with which credentials.
void applySettings(lumo::Host& host, lumo::Instance& instance, const Options& options) {
    const std::string& source = options.source;
    if (!source.empty()) applySetting(host, instance, "filename=" + source);
    for (const std::string& setting : options.settings)
        applySetting(host, instance, setting);
    if (source.empty() || isSet(options.settings, "queryMode")) return;
    SourceSettings found = settingsToLoad(host, instance, options);
    std::erase_if(found.settings, [&options](const std::string& setting) {
        return isSet(options.settings, setting.substr(0, setting.find('=')));
    });
    for (const std::string& setting : found.settings)
        applySetting(host, instance, setting);
    std::fprintf(stderr, "%s\n", sentenceAbout(source, found).c_str());
}

std::optional<Outcome> waitForAnswer(LoadWatch& watch, PatienceNotice& notice,
                                     double timeoutSeconds) {
    FrameClock clock;
    do {
        if (auto outcome = watch.runFrame()) return outcome;
        notice.show(clock.elapsedSeconds());
        clock.waitForNextFrame();
    } while (clock.elapsedSeconds() < timeoutSeconds);
    return std::nullopt;
}

}  // namespace workbench
