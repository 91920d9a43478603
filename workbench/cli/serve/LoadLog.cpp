#include "workbench/cli/serve/LoadLog.h"

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/run/EventLines.h"

namespace workbench {

namespace {

constexpr std::size_t mostKept = 100;  // of an instance

/// A first load is told of too: it is what the page has waited for.
std::string lineOf(const LoadEvent& event) {
    const std::string words = wordsOf(event, " → ");
    const bool isQuiet = !words.empty() || !event.isFirst || !isGood(event.report.outcome);
    return isQuiet ? words : "loaded, records " + std::to_string(event.report.records);
}

std::string jsonOf(const LoadEvent& event) {
    const LoadReport& report = event.report;
    JsonWriter out(JsonWriter::Layout::OneLine);
    const auto text = [&out](const char* name, const std::string& value) {
        out.name(name);
        out.text(value);
    };
    const auto number = [&out](const char* name, double value) {
        out.name(name);
        out.number(value);
    };
    out.open('{');
    text("instance", report.instance);
    text("outcome", nameOf(report.outcome));
    number("records", static_cast<double>(report.records));
    number("before", static_cast<double>(report.recordsBefore));
    number("bytes", static_cast<double>(report.bytes));
    number("duration", report.seconds);
    text("error", report.error);
    text("time", isoTime(report.time));
    text("line", lineOf(event));
    out.close('}');
    std::string json = out.take();
    json.pop_back();
    return json;
}

template <class Texts>
void append(const Texts& texts, std::string& list) {
    for (const std::string& text : texts)
        list += (list.empty() ? "" : ",\n") + text;
}

}  // namespace

void LoadLog::add(const LoadEvent& event) {
    std::string json = jsonOf(event);
    std::deque<std::string>& kept = kept_[event.report.instance];
    kept.push_back(json);
    if (kept.size() > mostKept) kept.pop_front();
    new_.push_back(std::move(json));
}

std::string LoadLog::takeNew() {
    std::string list;
    append(new_, list);
    new_.clear();
    return list.empty() ? "" : "[" + list + "]";
}

std::string LoadLog::all() const {
    std::string list;
    for (const auto& [instance, loads] : kept_)
        append(loads, list);
    return "[" + list + "]";
}

}  // namespace workbench
