#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "workbench/cli/Explanation.h"
#include "workbench/cli/FrameClock.h"
#include "workbench/cli/MutedOutput.h"
#include "workbench/cli/confirmation.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/scene_child.h"
#include "workbench/cli/timed_look.h"
#include "workbench/cli/written_records.h"
#include "workbench/cobalt/Expression.h"
#include "workbench/commands/commands.h"
#include "workbench/probe/database/open_database.h"
#include "workbench/probe/database/postgres_reading.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/words.h"

namespace workbench {

namespace {

using probe::Ladder;
using probe::Stage;
using probe::State;

constexpr std::size_t mostTries = 8;

/// What the plugin's own load came to.
struct Load {
    std::optional<Outcome> outcome;  // nothing when there was none in time
    std::size_t records = 0;
    double seconds = 0;
};

Load loadOnce(lumo::Host& host, lumo::Instance& instance, const Options& options) {
    LoadWatch watch(host, instance, true);
    PatienceNotice notice(false, options.timeoutSeconds);
    const FrameClock clock;
    instance.execAction(loadAction);
    Load load;
    load.outcome = waitForAnswer(watch, notice, options.timeoutSeconds);
    load.seconds = clock.elapsedSeconds();
    if (load.outcome)
        load.records = writtenRecords(load.outcome->script, host.parameters, instance.record());
    return load;
}

std::string sourceOf(const probe::Settings& settings) {
    const bool isDatabase =
        settings.queryMode == probe::QueryType::Sql && !settings.connStr.empty();
    return isDatabase ? probe::placeOfDatabase(settings.connStr)
                      : probe::withoutUserInfo(settings.filename);
}

/// A source beside the scene that the workbench was not started beside.
void proposeBesideScene(const probe::Settings& settings, const std::string& scene, Ladder& ladder) {
    const bool isMissing = ladder.failed() == Stage::Address;
    const std::string source = sourceOf(settings);
    const auto beside = std::filesystem::path(scene).parent_path() / source;
    std::error_code error;
    if (scene.empty() || !isMissing || std::filesystem::path(source).is_absolute() ||
        !std::filesystem::is_regular_file(beside, error))
        return;
    const std::string file = beside.lexically_normal().string();
    const auto at = settings.connStr.find(source);
    if (settings.queryMode != probe::QueryType::Sql) {
        ladder.propose(Stage::Address, {{"filename", file}});
    } else if (at != std::string::npos) {
        std::string connection = settings.connStr;
        ladder.propose(Stage::Address, {{"connStr", connection.replace(at, source.size(), file)}});
    }
}

/// Fields of a sheet that are no columns are known to the plugin alone.
void tellRefusedFields(const Outcome& outcome, const std::string& range, Ladder& ladder) {
    ladder.fail(
        Stage::Selection, range, "The plugin could not load it: " + outcome.error,
        "Set \"Fields to read\" (range) to columns of the sheet, divided by commas, or leave "
        "it empty for all.");
    ladder.propose(Stage::Selection, {{"range", ""}});
}

void tellFailure(const Outcome& outcome, const probe::Settings& settings, Ladder& ladder) {
    if (ladder.failed()) return;
    const bool wasLookedAt = ladder.at(Stage::Selection).state != State::Skipped;
    const bool hasFields = settings.queryMode == probe::QueryType::Excel && !settings.range.empty();
    if (wasLookedAt && hasFields && !ladder.records)
        return tellRefusedFields(outcome, settings.range, ladder);
    ladder.fail(wasLookedAt ? Stage::Script : Stage::Selection, "",
                "The plugin could not load it: " + outcome.error,
                wasLookedAt ? "The source may have changed meanwhile; explain it again." : "");
}

/// What a scene tells of the instance that is explained, if one does.
std::string toldByScene(const char* variable) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? "" : text;
}

void tellStore(const Outcome& outcome, Ladder& ladder) {
    const std::string leftOver = toldByScene(leftOverVariable);
    if (outcome.notStored) {
        ladder.fail(Stage::Settings, "",
                    "No shared memory is bound, so nothing is stored. It is bound when its name or "
                    "its type changes.",
                    "Set \"Shared Memory Variable \" (shmvar) or \"Shared Memory Type \" (shmtype) "
                    "once more.");
    } else if (outcome.notExecuted) {
        ladder.fail(Stage::Store, "",
                    "The data store cannot execute the script: " + outcome.scriptFault + ".",
                    "See what the stage before says of names and values.");
    } else if (!leftOver.empty()) {
        ladder.warn(Stage::Store, "", leftOver,
                    "A load replaces what it names, and leaves the rest.");
    } else {
        ladder.ok(Stage::Store, "");
    }
}

void tellAction(const std::string& action, const Outcome& outcome, Ladder& ladder) {
    if (action.empty()) return;
    const auto fault = cobalt::Expression().parse(action);
    const std::string words = fault ? "line " + std::to_string(fault->line) + ", column " +
                                          std::to_string(fault->column) + ": " + fault->message
                                    : outcome.actionFault;
    if (words.empty()) return ladder.ok(Stage::Action, action);
    ladder.fail(Stage::Action, action,
                std::string(fault ? "It cannot be read: " : "It failed: ") + words + ".",
                "Mend \"Post Update Action\" (postAction).");
}

/// Whether the plugin and the look at the source agree on how many records there are. Values that
/// break the script change what is written, and what was not stored has no count.
bool agree(const Ladder& ladder, const Load& load) {
    if (ladder.isLate) return !load.outcome;
    const bool isBroken = ladder.at(Stage::Script).state == State::Warning;
    if (isBroken || ladder.failed() || !ladder.records || !load.outcome || load.outcome->failed ||
        load.outcome->notExecuted || load.outcome->notStored)
        return true;
    return *ladder.records == load.records;
}

void tellDifference(const Load& load, Ladder& ladder) {
    if (!ladder.records) return;
    const std::string cause = "The plugin wrote " + probe::counted(load.records, "record") +
                              "; looking at the source gave " +
                              probe::counted(*ladder.records, "record") +
                              ". It may change all the time.";
    const char* const next = "If it does not, this is a fault: please report it with the source.";
    if (load.records == 0) return ladder.fail(Stage::Store, "", cause, next);
    ladder.warn(Stage::Store, "", cause, next);
}

/// What nobody looked into cannot be said to be rightly empty.
void tellNothing(Ladder& ladder) {
    if (ladder.failed() || ladder.at(Stage::Selection).state != State::Skipped) return;
    ladder.fail(Stage::Selection, "", "The plugin loaded the source and wrote no records.",
                "Look at what the source holds, and whether it is what these settings read.");
}

std::optional<Confirmed> confirm(const Ladder& ladder, std::size_t present, const lumo::Host& host,
                                 const lumo::Instance& instance, const Options& options) {
    const FrameClock clock;
    std::size_t tries = 0;
    for (const probe::Remedy& remedy : ladder.remedies()) {
        const double left = options.timeoutSeconds - clock.elapsedSeconds();
        if (tries++ == mostTries || left <= 0) break;
        const auto records =
            recordsWith(remedy.proposal, host.parameters, instance.record(), options, left);
        if (records && *records > (ladder.failed() ? 0 : present))
            return Confirmed{remedy, *records};
    }
    return std::nullopt;
}

std::string noAnswerText(const std::string& source, double timeoutSeconds) {
    std::array<char, 32> seconds{};
    std::snprintf(seconds.data(), seconds.size(), "%g", timeoutSeconds);
    return "No answer for \"" + source + "\" within " + seconds.data() + " seconds.\n";
}

/// Looks at the source and loads it; both again, once, when they differ. Nothing when a look did
/// not end in time.
std::optional<Load> lookAndLoad(lumo::Host& host, lumo::Instance& instance, const Options& options,
                                const probe::Settings& settings, Ladder& ladder) {
    Load load;
    for (int look = 0; look < 2; ++look) {
        auto found = lookInTime(settings, options.timeoutSeconds, options.mayWrite);
        if (!found) return std::nullopt;
        ladder = std::move(*found);
        const std::string scene = toldByScene(sceneFileVariable);
        proposeBesideScene(settings, scene.empty() ? options.scene : scene, ladder);
        if (ladder.credentialsRefused || ladder.mustNotLoad) return load;
        load = loadOnce(host, instance, options);
        const bool canBeCounted = isCountable(host.parameters, instance.record());
        if (load.records > 0 && !canBeCounted) load.records = ladder.records.value_or(load.records);
        if (options.mayWrite || agree(ladder, load)) return load;  // what may write is run once
    }
    tellDifference(load, ladder);
    return load;
}

std::string textParameter(const lumo::Host& host, const lumo::Instance& instance,
                          const char* name) {
    const auto index = host.parameters.find(name);
    return index ? std::string(instance.record().text(*index)) : "";
}

std::string nameFor(const Options& options, const probe::Settings& settings) {
    if (!options.instance.empty()) return options.instance;
    const std::string source = sourceOf(settings);
    return source.empty() ? "workbench" : source;
}

/// Adds to what the look found what the plugin's own load came to.
void tellLoad(const Load& load, const probe::Settings& settings, const std::string& action,
              Explanation& explanation) {
    Ladder& ladder = explanation.ladder;
    if (load.outcome->failed) tellFailure(*load.outcome, settings, ladder);
    if (load.records == 0) tellNothing(ladder);
    tellStore(*load.outcome, ladder);
    tellAction(action, *load.outcome, ladder);
    explanation.records = load.outcome->failed ? 0 : load.records;
    explanation.bytes = load.outcome->script.size();
}

/// The plugin's load too, in this process and in those that try proposals.
void holdPostgresToReading() {
    const std::string variable = probe::variableThatHoldsPostgresToReading();
    const auto equals = variable.find('=');
    setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
}

ExitStatus statusOf(const Explanation& explanation) {
    return explanation.ladder.isLate ? ExitStatus::NoAnswer
           : explanation.isOk()      ? ExitStatus::Loaded
                                     : ExitStatus::LoadFailed;
}

}  // namespace

ExitStatus runExplain(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams) {
    // What the plugin prints is told by stage, and may hold secrets.
    MutedOutput muted;
    if (!options.mayWrite) holdPostgresToReading();
    lumo::Instance instance(host, plugin, "workbench");
    placeInstance(host, instance, options);
    applySettings(host, instance, options);
    setParameter(host.parameters, instance.record(), "logLevel", "FATAL");  // what it says is told
    setParameter(host.parameters, instance.record(), "autoLoad", "0");  // it would load once more
    const probe::Settings settings = probeSettings(host.parameters, instance.record());
    const Redaction redact(settings);
    const std::string lateText = noAnswerText(redact(sourceOf(settings)), options.timeoutSeconds);

    Explanation explanation;
    explanation.name = nameFor(options, settings);
    Ladder& ladder = explanation.ladder;
    const auto load = lookAndLoad(host, instance, options, settings, ladder);
    if (!load) {
        muted.tell(lateText);
        std::_Exit(static_cast<int>(ExitStatus::NoAnswer));
    }
    if (!load->outcome) muted.stay();  // what does not answer in time prints when it is ended
    const bool isKnown = load->outcome || ladder.mustNotLoad || ladder.failed();
    if (!isKnown) {
        muted.tell(lateText);
        return ExitStatus::NoAnswer;
    }
    if (load->outcome)
        tellLoad(*load, settings, textParameter(host, instance, "postAction"), explanation);
    explanation.seconds = load->seconds;
    ladder.cut();
    if (!ladder.credentialsRefused)
        explanation.confirmed = confirm(ladder, load->records, host, instance, options);
    explanation.hide(redact);
    const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
    streams.writeResult(options.output == Output::Json
                            ? explanation.json()
                            : explanation.text(terminalHasUnicode(), page.columns));
    return statusOf(explanation);
}

}  // namespace workbench
