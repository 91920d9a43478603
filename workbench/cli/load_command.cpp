#include <algorithm>
#include <cstdio>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/LoadWatch.h"
#include "workbench/cli/PatienceNotice.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/commands.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/source_settings.h"
#include "workbench/cli/store_json.h"
#include "workbench/cli/store_table.h"
#include "workbench/cli/written_records.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/source_start.h"

namespace workbench {

namespace {

constexpr int32_t loadAction = 0;

void place(lumo::Host& host, lumo::Instance& instance, const Options& options) {
    if (options.scene.empty()) {
        instance.create();
        instance.load();
        return;
    }
    const SceneFile scene = readSceneFile(options.scene);
    scene.restore(scene.find(options.instance), host.parameters, instance.record());
    instance.load();
    instance.afterLoad();
}

void applySetting(lumo::Host& host, lumo::Instance& instance, const std::string& setting) {
    const auto equals = setting.find('=');
    if (equals == std::string::npos)
        throw UsageError("--set takes NAME=VALUE, not \"" + setting + "\".");
    const std::string_view text = setting;
    instance.changed(setParameter(host.parameters, instance.record(), text.substr(0, equals),
                                  text.substr(equals + 1)));
}

bool isSet(const std::vector<std::string>& settings, std::string_view name) {
    return std::any_of(settings.begin(), settings.end(), [name](const std::string& setting) {
        return std::string_view(setting).substr(0, setting.find('=')) == name;
    });
}

// What the user has set holds. It comes before looking, since it says with which credentials.
void applySettings(lumo::Host& host, lumo::Instance& instance, const Options& options) {
    const std::string& source = options.source;
    if (!source.empty()) applySetting(host, instance, "filename=" + source);
    for (const std::string& setting : options.settings)
        applySetting(host, instance, setting);
    if (source.empty() || isSet(options.settings, "queryMode")) return;
    SourceSettings found = settingsForSource(source, host.parameters, instance.record());
    std::erase_if(found.settings, [&options](const std::string& setting) {
        return isSet(options.settings, setting.substr(0, setting.find('=')));
    });
    for (const std::string& setting : found.settings)
        applySetting(host, instance, setting);
    std::fprintf(stderr, "%s\n", sentenceAbout(source, found).c_str());
}

std::string sourceOf(const lumo::Host& host, const lumo::Instance& instance) {
    const auto index = host.parameters.find("filename");
    return index ? std::string(instance.record().text(*index)) : "";
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

std::string result(const lumo::Host& host, const Outcome& outcome, Output output,
                   const PageSize& page) {
    switch (output) {
        case Output::Script:
            return outcome.script;
        case Output::Json:
            return storeJson(host.store.core());
        case Output::Trace:
            return host.trace.text();
        default:
            return storeTables(host.store.core(), host.memories, page);
    }
}

void adviseOnMissingFile(const lumo::Host& host, const lumo::Instance& instance,
                         const std::string& scene) {
    const std::string advice = adviceOnMissingSource(host.parameters, instance.record(), scene);
    if (!advice.empty()) std::fprintf(stderr, "%s\n", advice.c_str());
}

void report(const Outcome& outcome) {
    if (outcome.failed) {
        std::fprintf(stderr, "%s\n", outcome.error.c_str());
    } else if (outcome.notStored) {
        std::fputs(
            "Nothing was stored: no shared memory is bound. It is bound when shmvar or shmtype "
            "changes, so set one of them.\n",
            stderr);
    }
}

// Needs the script of the outcome.
bool isAsExpected(const Outcome& outcome, const RecordRange& expected, const lumo::Host& host,
                  const lumo::Instance& instance) {
    const std::size_t records = writtenRecords(outcome.script, host.parameters, instance.record());
    if (expected.contains(records)) return true;
    std::fprintf(stderr, "%s\n", expected.complaint(records).c_str());
    return false;
}

ExitStatus judge(const Outcome& outcome, const Options& options, const lumo::Host& host,
                 const lumo::Instance& instance) {
    const ExitStatus status = statusOf(outcome);
    if (status != ExitStatus::Loaded || !options.expectedRecords) return status;
    return isAsExpected(outcome, *options.expectedRecords, host, instance)
               ? status
               : ExitStatus::UnexpectedRecords;
}

}  // namespace

ExitStatus runLoad(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                   const StandardStreams& streams) {
    for (const std::string& name : options.definitions)
        host.store.core().define(name);
    lumo::Instance instance(host, plugin, "workbench");
    place(host, instance, options);
    try {
        applySettings(host, instance, options);
    } catch (const probe::LookFailure& failure) {
        std::fprintf(stderr, "%s %s.\n", probe::withoutUserInfo(options.source).c_str(),
                     failure.what());
        return ExitStatus::LoadFailed;
    }
    const auto& expected = options.expectedRecords;
    if (expected && expected->most != RecordRange::unlimited)
        requireCountable(host.parameters, instance.record());

    LoadWatch watch(host, instance, options.output == Output::Script || expected);
    instance.execAction(loadAction);
    const std::string source = sourceOf(host, instance);
    PatienceNotice notice(streams.errorIsTerminal(), options.timeoutSeconds);
    const auto outcome = waitForAnswer(watch, notice, options.timeoutSeconds);

    if (!outcome)
        std::fprintf(stderr, "No answer for \"%s\" within %g seconds.\n", source.c_str(),
                     options.timeoutSeconds);
    const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
    streams.writeResult(result(host, outcome.value_or(Outcome{}), options.output, page));
    if (!outcome) return ExitStatus::NoAnswer;
    if (outcome->failed) adviseOnMissingFile(host, instance, options.scene);
    report(*outcome);
    return judge(*outcome, options, host, instance);
}

}  // namespace workbench
