#include <cstdio>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/LoadWatch.h"
#include "workbench/cli/PatienceNotice.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/run/ReportFile.h"
#include "workbench/cli/store_json.h"
#include "workbench/cli/store_table.h"
#include "workbench/cli/written_records.h"
#include "workbench/commands/commands.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/fetch/source_start.h"

namespace workbench {

namespace {

std::string sourceOf(const lumo::Host& host, const lumo::Instance& instance) {
    const auto index = host.parameters.find("filename");
    return index ? std::string(instance.record().text(*index)) : "";
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

void tell(const Outcome& outcome, const Options& options) {
    if (outcome.failed) {
        std::fprintf(stderr, "%s\n", outcome.error.c_str());
    } else if (outcome.notStored) {
        std::fputs(
            "Nothing was stored: no shared memory is bound. It is bound when shmvar or shmtype "
            "changes, so set one of them.\n",
            stderr);
    } else if (outcome.bytes == 0 && !options.expectedRecords) {
        std::fputs(
            "Nothing was loaded; intake-workbench explain with the same settings says why.\n",
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

LoadReport reportOfNoAnswer() {
    LoadReport report;
    report.outcome = LoadOutcome::Late;
    report.error = "no answer in time";
    report.time = std::chrono::system_clock::now();
    return report;
}

LoadReport reportOn(const std::optional<Outcome>& outcome, const lumo::Host& host,
                    const lumo::Instance& instance) {
    LoadReport report = outcome ? reportOf(*outcome) : reportOfNoAnswer();
    const Redaction redact(probeSettings(host.parameters, instance.record()));
    report.error = redact(report.error);
    return report;
}

}  // namespace

ExitStatus runLoad(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                   const StandardStreams& streams) {
    ReportFile reports(options.report, streams);
    for (const std::string& name : options.definitions)
        host.store.core().define(name);
    lumo::Instance instance(host, plugin, "workbench");
    const std::string name = placeInstance(host, instance, options);
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
    if (!options.report.empty()) watch.follow(1);
    const FrameClock clock;
    instance.execAction(loadAction);
    const std::string source = sourceOf(host, instance);
    PatienceNotice notice(streams.errorIsTerminal(), options.timeoutSeconds);
    const auto outcome = waitForAnswer(watch, notice, options.timeoutSeconds);
    LoadReport report = reportOn(outcome, host, instance);
    report.instance = name;
    report.seconds = clock.elapsedSeconds();

    if (!outcome)
        std::fprintf(stderr, "No answer for \"%s\" within %g seconds.\n", source.c_str(),
                     options.timeoutSeconds);
    const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
    const std::string shown = result(host, outcome.value_or(Outcome{}), options.output, page);
    const bool isReportNext = options.report == "-" && !shown.empty() && !shown.ends_with('\n');
    streams.writeResult(isReportNext ? shown + "\n" : shown);
    reports.write(report);
    if (!outcome) return ExitStatus::NoAnswer;
    if (outcome->failed) adviseOnMissingFile(host, instance, options.scene);
    tell(*outcome, options);
    return judge(*outcome, options, host, instance);
}

}  // namespace workbench
