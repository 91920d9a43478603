#include "workbench/cli/serve/ReportPage.h"

#include <algorithm>
#include <array>
#include <utility>

#include "formats/text/number_text.h"
#include "workbench/cli/serve/LineReader.h"
#include "workbench/cli/serve/load_json.h"
#include "workbench/cli/serve/parsed_json.h"

namespace workbench {

namespace {

using intake::JsonDocument;

constexpr std::size_t mostInPage = 500;
constexpr std::size_t mostInstances = 500;
constexpr std::uintmax_t mostBytes = 256U << 20;  // of a file
constexpr std::array outcomes{LoadOutcome::Loaded,       LoadOutcome::Empty,
                              LoadOutcome::Failed,       LoadOutcome::NotExecuted,
                              LoadOutcome::ActionFailed, LoadOutcome::Late};

std::size_t countIn(const JsonDocument& json, const char* name) {
    return intake::parseWhole<std::size_t>(memberText(json, JsonDocument::ROOT, name)).value_or(0);
}

}  // namespace

bool ReportPage::readLine(const std::string& line, Load& load) {
    const auto json = line.size() > longestReport ? std::nullopt : parsedJson(line);
    if (!json) return false;
    const auto text = [&](const char* name) {
        return std::string(memberText(*json, JsonDocument::ROOT, name));
    };
    const auto outcome = std::find_if(outcomes.begin(), outcomes.end(), [&](LoadOutcome each) {
        return text("outcome") == nameOf(each);
    });
    load.time = text("time");
    if (outcome == outcomes.end() || load.time.empty()) return false;
    LoadReport& report = load.report;
    report.instance = text("instance");
    report.outcome = *outcome;
    report.records = countIn(*json, "records");
    report.recordsBefore = countIn(*json, "recordsBefore");
    report.bytes = countIn(*json, "bytes");
    report.seconds = static_cast<double>(countIn(*json, "durationMs")) / 1000;
    report.error = text("error");
    return true;
}

void ReportPage::summarise(const Load& load) {
    Summary& summary = summaries_[load.report.instance];
    if (summary.loads++ == 0) summary.first = load.time;
    if (!isGood(load.report.outcome)) ++summary.bad;
    summary.last = load.time;
}

void ReportPage::note(Load load) {
    const bool isKnown = summaries_.contains(load.report.instance);
    if (isKnown || summaries_.size() < mostInstances) summarise(load);
    if (!wanted_.instance.empty() && load.report.instance != wanted_.instance) return;
    const std::size_t place = count_++;
    const std::size_t most = std::min(wanted_.count, mostInPage);
    if (place >= wanted_.from && loads_.size() < most) loads_.push_back(std::move(load));
}

void ReportPage::read(const std::filesystem::path& file, const std::stop_token& stop) {
    LineReader reader(file, mostBytes, longestReport);
    for (std::string line; !stop.stop_requested() && reader.next(line);) {
        Load load;
        if (readLine(line, load)) {
            note(std::move(load));
        } else {
            ++unreadable_;
        }
    }
    isCut_ = reader.isCut();
}

std::string ReportPage::json(const Redaction& redact) const {
    JsonWriter out;
    out.open('{');
    out.name("instances");
    out.open('[');
    for (const auto& [name, summary] : summaries_) {
        out.open('{');
        out.member("name", redact(name));
        out.member("loads", summary.loads);
        out.member("bad", summary.bad);
        out.member("first", redact(summary.first));
        out.member("last", redact(summary.last));
        out.close('}');
    }
    out.close(']');
    out.member("count", count_);
    out.name("loads");
    out.open('[');
    for (const Load& load : loads_) {
        LoadReport report = load.report;
        report.instance = redact(report.instance);
        report.error = redact(report.error);
        out.open('{');
        writeLoad(report, redact(load.time), "", out);
        out.close('}');
    }
    out.close(']');
    out.member("unreadable", unreadable_);
    out.name("endedEarly");
    out.boolean(isCut_);
    out.close('}');
    return out.take();
}

bool isReport(const std::filesystem::path& file) {
    std::string line;
    if (!LineReader(file, longestReport, longestReport).next(line)) return false;
    const auto json = parsedJson(line);
    return json && json->find(JsonDocument::ROOT, "outcome") != JsonDocument::NONE &&
           json->find(JsonDocument::ROOT, "durationMs") != JsonDocument::NONE;
}

}  // namespace workbench
