#include "workbench/cli/run/EventLines.h"

#include <cstdio>

#include "workbench/cli/display_text.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/run/duration_text.h"

namespace workbench {

namespace {

void print(double now, const std::string& instance, const std::string& words) {
    std::fprintf(stderr, "%8.2f s  %s: %s\n", now, printable(instance).c_str(),
                 printable(words).c_str());
}

std::string counted(std::size_t records) {
    return std::to_string(records) + (records == 1 ? " record" : " records");
}

std::string wordsOfBad(const LoadEvent& event) {
    const LoadReport& report = event.report;
    switch (report.outcome) {
        case LoadOutcome::Failed:
            return event.plainError;
        case LoadOutcome::NotExecuted:
            // The console has said why.
            return report.error.substr(0, report.error.find(": "));
        case LoadOutcome::Late:
            return event.isNews ? "late, no answer for " + durationText(report.seconds) : "";
        default:
            return report.error;
    }
}

std::string wordsOfGood(const LoadEvent& event, const std::string& arrow) {
    const LoadReport& report = event.report;
    if (report.outcome == LoadOutcome::Empty) return event.wasEmpty ? "" : "empty";
    if (event.isRecovery) return counted(report.records);
    if (event.isFirst || report.records == report.recordsBefore) return "";
    return "records " + std::to_string(report.recordsBefore) + arrow +
           std::to_string(report.records);
}

}  // namespace

std::string wordsOf(const LoadEvent& event, const std::string& arrow) {
    if (!isGood(event.report.outcome)) return wordsOfBad(event);
    std::string words = wordsOfGood(event, arrow);
    if (event.isRecovery) words = words.empty() ? "recovered" : "recovered, " + words;
    if (!words.empty() && event.report.leftOver > 0)
        words += ", " + std::to_string(event.report.leftOver) + " left over";
    return words;
}

void EventLines::tell(const LoadEvent& event, const std::string& advice, double now) {
    const std::string& instance = event.report.instance;
    const std::string words = wordsOf(event, terminalHasUnicode() ? " → " : " -> ");
    if (!advice.empty()) print(now, instance, advice);
    if (!words.empty()) {
        print(now, instance, words);
    } else if (tellsEach_ && isGood(event.report.outcome)) {
        print(now, instance, "loaded");
    }
}

void EventLines::explain(const std::string& instance, const std::string& why, double now) {
    print(now, instance, why);
}

void EventLines::note(const std::string& sentence, double now) {
    std::fprintf(stderr, "%8.2f s  %s\n", now, sentence.c_str());
}

}  // namespace workbench
