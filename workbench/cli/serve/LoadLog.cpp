#include "workbench/cli/serve/LoadLog.h"

#include <algorithm>
#include <utility>

#include "workbench/cli/run/EventLines.h"
#include "workbench/cli/serve/load_json.h"

namespace workbench {

namespace {

// Of an instance:
constexpr std::size_t mostKept = 500;
constexpr std::size_t mostLatest = 100;
constexpr std::size_t mostInPage = 500;
constexpr std::ptrdiff_t mostExplanations = 20;
constexpr std::size_t longestExplanation = 256U << 10;

/// A first load is told of too: it is what the page has waited for.
std::string lineOf(const LoadEvent& event) {
    const std::string words = wordsOf(event, " → ");
    const bool isQuiet = !words.empty() || !event.isFirst || !isGood(event.report.outcome);
    return isQuiet ? words : "loaded, records " + std::to_string(event.report.records);
}

void append(const std::string& text, std::string& list) {
    list += (list.empty() ? "" : ",\n") + text;
}

}  // namespace

std::string LoadLog::jsonOf(const Load& load) const {
    LoadReport report = load.report;
    report.instance = nameOf_(load.writer);
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    writeLoad(report, isoTime(report.time), load.line, out);
    out.member("id", load.number);
    out.member("new", load.newRecords);
    out.member("gone", load.goneRecords);
    out.close('}');
    std::string json = out.take();
    json.pop_back();
    return json;
}

std::uint64_t LoadLog::add(const LoadEvent& event) {
    Load load{event.writer,      ++last_, event.report, lineOf(event), event.newRecords,
              event.goneRecords, ""};
    new_.push_back(load);
    Loads& kept = kept_[event.writer];
    kept.push_back(std::move(load));
    if (kept.size() > mostKept) kept.pop_front();
    return last_;
}

std::string LoadLog::takeNew() {
    std::string list;
    for (const Load& load : new_)
        append(jsonOf(load), list);
    new_.clear();
    return list.empty() ? "" : "[" + list + "]";
}

std::string LoadLog::latest() const {
    std::string list;
    for (const auto& [writer, loads] : kept_) {
        for (std::size_t i = loads.size() - std::min(loads.size(), mostLatest); i < loads.size();
             ++i)
            append(jsonOf(loads[i]), list);
    }
    return "[" + list + "]";
}

std::string LoadLog::historic(const Load& load) const {
    const char* const hasLadder = load.explanation.empty() ? "false" : "true";
    const std::string json = jsonOf(load);
    return json.substr(0, json.size() - 1) + ", \"ladder\": " + hasLadder + "}";
}

std::string LoadLog::history(std::uint32_t writer, std::size_t from, std::size_t count) const {
    const auto found = kept_.find(writer);
    const Loads none;
    const Loads& loads = found == kept_.end() ? none : found->second;
    const std::size_t first = std::min(from, loads.size());
    const std::size_t last = first + std::min({count, mostInPage, loads.size() - first});
    std::string list;
    for (std::size_t i = first; i < last; ++i)
        append(historic(loads[loads.size() - 1 - i]), list);
    return "{\"loads\": [" + list + "], \"count\": " + std::to_string(loads.size()) + "}\n";
}

void LoadLog::explain(std::uint32_t writer, std::uint64_t load, const std::string& explanation) {
    const auto known = kept_.find(writer);
    if (known == kept_.end() || explanation.size() > longestExplanation) return;
    Loads& loads = known->second;
    for (Load& each : loads) {
        if (each.number == load) each.explanation = explanation;
    }
    const auto isExplained = [](const Load& each) { return !each.explanation.empty(); };
    if (std::count_if(loads.begin(), loads.end(), isExplained) > mostExplanations)
        std::find_if(loads.begin(), loads.end(), isExplained)->explanation.clear();
}

const LoadLog::Load* LoadLog::find(std::uint32_t writer, std::uint64_t number) const {
    const auto known = kept_.find(writer);
    if (known == kept_.end()) return nullptr;
    const auto found = std::find_if(known->second.begin(), known->second.end(),
                                    [number](const Load& load) { return load.number == number; });
    return found == known->second.end() ? nullptr : &*found;
}

std::optional<std::string> LoadLog::explained(std::uint32_t writer, std::uint64_t load) const {
    const Load* const found = find(writer, load);
    if (found == nullptr) return std::nullopt;
    const std::string explanation = found->explanation.empty() ? "null" : found->explanation;
    return "{\"load\": " + historic(*found) + ", \"explanation\": " + explanation + "}\n";
}

void LoadLog::keepOnly(const std::set<std::uint32_t>& writers) {
    std::erase_if(kept_, [&](const auto& each) { return !writers.contains(each.first); });
}

}  // namespace workbench
