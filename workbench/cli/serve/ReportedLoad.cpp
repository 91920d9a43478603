#include "workbench/cli/serve/ReportedLoad.h"

#include <algorithm>
#include <array>

#include "formats/text/number_text.h"
#include "workbench/cli/serve/LineReader.h"
#include "workbench/cli/serve/parsed_json.h"

namespace workbench {

namespace {

using intake::JsonDocument;

constexpr std::array outcomes{LoadOutcome::Loaded,       LoadOutcome::Empty,
                              LoadOutcome::Failed,       LoadOutcome::NotExecuted,
                              LoadOutcome::ActionFailed, LoadOutcome::Late};

std::size_t countIn(const JsonDocument& json, const char* name) {
    return intake::parseWhole<std::size_t>(memberText(json, JsonDocument::ROOT, name)).value_or(0);
}

}  // namespace

std::optional<ReportedLoad> reportedLoad(const std::string& line) {
    const auto json = line.size() > longestReport ? std::nullopt : parsedJson(line);
    if (!json) return std::nullopt;
    const auto text = [&](const char* name) {
        return std::string(memberText(*json, JsonDocument::ROOT, name));
    };
    const auto outcome =
        std::find_if(outcomes.begin(), outcomes.end(),
                     [told = text("outcome")](LoadOutcome each) { return told == nameOf(each); });
    ReportedLoad load;
    load.time = text("time");
    if (outcome == outcomes.end() || load.time.empty()) return std::nullopt;
    LoadReport& report = load.report;
    report.instance = text("instance");
    report.outcome = *outcome;
    report.records = countIn(*json, "records");
    report.recordsBefore = countIn(*json, "recordsBefore");
    report.bytes = countIn(*json, "bytes");
    report.seconds = static_cast<double>(countIn(*json, "durationMs")) / 1000;
    report.error = text("error");
    return load;
}

bool isReport(const std::filesystem::path& file) {
    std::string line;
    if (!LineReader(file, longestReport, longestReport).next(line)) return false;
    const auto json = parsedJson(line);
    return json && json->find(JsonDocument::ROOT, "outcome") != JsonDocument::NONE &&
           json->find(JsonDocument::ROOT, "durationMs") != JsonDocument::NONE;
}

}  // namespace workbench
