#include "workbench/cli/run/LoadReport.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "workbench/cli/JsonWriter.h"

namespace workbench {

namespace {

// In the order of LoadOutcome.
constexpr std::array names{"loaded", "empty", "failed", "notExecuted", "actionFailed", "late"};

LoadOutcome outcomeOf(const Outcome& outcome) {
    if (outcome.failed) return LoadOutcome::Failed;
    if (outcome.notStored || outcome.notExecuted) return LoadOutcome::NotExecuted;
    if (!outcome.actionFault.empty()) return LoadOutcome::ActionFailed;
    return outcome.records == 0 ? LoadOutcome::Empty : LoadOutcome::Loaded;
}

std::string errorOf(const Outcome& outcome) {
    if (outcome.failed) return outcome.error;
    if (outcome.notStored) return "no shared memory is bound";
    if (outcome.notExecuted)
        return "the data store could not execute the script: " + outcome.scriptFault;
    if (!outcome.actionFault.empty())
        return "the post-update action failed: " + outcome.actionFault;
    return "";
}

std::size_t milliseconds(double seconds) {
    return static_cast<std::size_t>(std::llround(seconds * 1000));
}

}  // namespace

const char* nameOf(LoadOutcome outcome) {
    return names[static_cast<std::size_t>(outcome)];
}

bool isGood(LoadOutcome outcome) {
    return outcome == LoadOutcome::Loaded || outcome == LoadOutcome::Empty;
}

LoadReport reportOf(const Outcome& outcome) {
    LoadReport report;
    report.outcome = outcomeOf(outcome);
    report.records = outcome.records;
    report.bytes = outcome.bytes;
    report.error = errorOf(outcome);
    report.time = std::chrono::system_clock::now();
    return report;
}

std::string isoTime(std::chrono::system_clock::time_point time) {
    using std::chrono::milliseconds;
    const auto sinceEpoch = std::chrono::floor<milliseconds>(time.time_since_epoch()).count();
    const auto second = static_cast<std::time_t>(sinceEpoch / 1000);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", std::gmtime(&second));
    std::array<char, 8> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%03dZ", static_cast<int>(sinceEpoch % 1000));
    return std::string(text.data()) + fraction.data();
}

std::string lineOf(const LoadReport& report) {
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    out.member("instance", report.instance);
    out.member("outcome", nameOf(report.outcome));
    out.member("records", report.records);
    out.member("recordsBefore", report.recordsBefore);
    out.member("leftOver", report.leftOver);
    out.member("leftOverAgeMs", milliseconds(report.leftOverAge));
    out.member("bytes", report.bytes);
    out.member("durationMs", milliseconds(report.seconds));
    out.member("error", report.error);
    out.member("time", isoTime(report.time));
    out.close('}');
    return out.take();
}

}  // namespace workbench
