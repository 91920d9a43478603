#include "workbench/cli/serve/DryRun.h"

#include <algorithm>
#include <array>

#include "formats/text/trim.h"
#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/FrameClock.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/child_load.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/moments.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/record_values.h"
#include "workbench/cli/store_table.h"
#include "workbench/cli/written_records.h"
#include "workbench/cobalt/Expression.h"
#include "workbench/probe/database/QueryText.h"
#include "workbench/probe/database/postgres_reading.h"

namespace workbench {

namespace {

constexpr std::size_t mostScript = 65536;
constexpr std::size_t mostChanges = 500;
constexpr std::size_t mostRows = 200;
constexpr std::size_t mostCells = 20'000;
constexpr std::size_t longestCell = 200;  // columns

// In the order of StoreChange::Kind.
constexpr std::array kinds{"new", "changed", "gone", "left"};

std::string memoryText(lumo::Host& host, const lumo::Record& record) {
    const std::array memories{&host.memories.scene, &host.memories.global,
                              &host.memories.distributed};
    const auto type = host.parameters.find("shmtype");
    const auto place = static_cast<std::size_t>(type ? record.integer(*type) : 0);
    const std::string* const text = memories[std::min(place, memories.size() - 1)]->find(
        textParameter("shmvar", host.parameters, record));
    return text == nullptr ? "" : *text;
}

/// The start of a text in UTF-8, broken between characters.
std::string startOfScript(const std::string& script) {
    std::string text = toUtf8(script);
    if (text.size() <= mostScript) return text;
    std::size_t end = mostScript;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return text.substr(0, end);
}

void writeTexts(const std::vector<std::string>& texts, JsonWriter& out) {
    out.open('[');
    for (const std::string& text : texts)
        out.text(text);
    out.close(']');
}

void writeTable(const Table& table, const Redaction& redact, JsonWriter& out) {
    const std::size_t columns = std::max<std::size_t>(table.header.size(), 1);
    const std::size_t rows =
        std::min(table.rows.size(), std::max<std::size_t>(mostCells / columns, 1));
    out.name("table");
    out.open('{');
    out.name("columns");
    writeTexts(table.header, out);
    out.name("rows");
    out.open('[');
    for (std::size_t i = 0; i < rows; ++i) {
        std::vector<std::string> cells;
        for (const std::string& cell : table.rows[i])
            cells.push_back(redact(fitted(cell, longestCell)));
        writeTexts(cells, out);
    }
    out.close(']');
    out.name("leftOut");
    out.number(static_cast<double>(table.rowsLeftOut + table.rows.size() - rows));
    out.close('}');
}

void writeChange(const StoreChange& change, const Redaction& redact, JsonWriter& out) {
    const auto text = [&](const char* name, const std::string& value) {
        out.name(name);
        out.text(redact(value));
    };
    out.open('{');
    text("field", change.field);
    text("key", change.key);
    text("kind", kinds[static_cast<std::size_t>(change.kind)]);
    text("before", change.before);
    text("after", change.after);
    out.name("age");
    if (change.kind == StoreChange::Kind::Left) {
        out.number(secondsSince(change.moment));
    } else {
        out.null();
    }
    out.close('}');
}

std::string wordsOf(const cobalt::ScriptError& error) {
    return "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) +
           ": " + error.message;
}

}  // namespace

DryRun::DryRun(lumo::Host& host, const LiveInstance& instance, const Options& options)
    : parameters_(host.parameters),
      plugin_(options.plugin),
      fontEncoding_(options.fontEncoding),
      writer_(instance.writer()),
      record_(instance.values()),
      settings_(probeSettings(host.parameters, record_)),
      redact_(settings_),
      action_(textParameter("postAction", host.parameters, record_)),
      memoryBefore_(memoryText(host, record_)) {}

bool DryRun::mayWrite() const {
    const probe::QueryText query(settings_.query);
    return settings_.queryMode == probe::QueryType::Sql && !query.isBlank() &&
           !(query.isReading() && query.isCertain());
}

void DryRun::load(const std::stop_token& stop) {
    SceneChild child = childThatLoads(parameters_, record_);
    child.plugin = plugin_;
    child.fontEncoding = fontEncoding_;
    if (!mayWrite()) child.environment = {probe::variableThatHoldsPostgresToReading()};
    const FrameClock clock;
    ChildAnswer answer = ask(child, stop);
    seconds_ = clock.elapsedSeconds();
    script_ = std::move(answer.out);
    judge(answer.status, answer.err);
}

void DryRun::judge(int status, const std::string& errors) {
    records_ = writtenRecords(script_, parameters_, record_);
    error_ = redact_(printable(intake::trimmed(errors, " \r\n")));
    const bool isShared = settings_.mode == probe::TargetMode::SharedMemory;
    switch (static_cast<ExitStatus>(status)) {
        case ExitStatus::Loaded:
            outcome_ = records_ == 0 ? "empty" : "loaded";
            error_.clear();
            return isShared ? loadShared() : void(loaded_.execute(script_));
        case ExitStatus::NotExecuted:
            outcome_ = "notExecuted";
            return;
        case ExitStatus::LoadFailed:
        case ExitStatus::Usage:
            outcome_ = "failed";
            return;
        default:
            outcome_ = "late";
            if (error_.empty()) error_ = "There was no answer in time.";
    }
}

void DryRun::loadShared() {
    if (script_ == memoryBefore_) {
        changes_.same = 1;
        return;
    }
    changes_.listed.push_back(
        {StoreChange::Kind::Changed, "shared memory", textParameter("shmvar", parameters_, record_),
         fitted(memoryBefore_, longestCell), fitted(script_, longestCell), 0});
}

bool DryRun::concerns(const cobalt::Field& field) const {
    if (!action_.empty() || loaded_.find(field.name()) != nullptr) return true;
    if (field.origin().writer == writer_) return true;
    const cobalt::Entries& entries = field.value().entries();
    return std::any_of(entries.begin(), entries.end(), [this](const cobalt::Entry& entry) {
        return entry.origin.writer == writer_;
    });
}

void DryRun::compareWith(const cobalt::Store& before) {
    const bool isWritten = !loaded_.empty();
    if (!isWritten) return;
    const cobalt::Origin origin{writer_, momentNow()};
    cobalt::Store after = before.copyIf([](const cobalt::Field&) { return true; });
    after.execute(script_, origin);
    act(after);
    changes_ = compareStores(before, after, origin, mostChanges);
}

void DryRun::act(cobalt::Store& store) {
    cobalt::Expression action;
    auto error = action.parse(action_);
    const auto note = [this](const std::string& command) {
        commands_.push_back(redact_(toUtf8(command)));
        return std::string();
    };
    if (!error) error = action.execute(store, note, {});
    if (error) actionError_ = wordsOf(*error);
}

std::string DryRun::json() const {
    JsonWriter out;
    const auto text = [&out](const char* name, const std::string& value) {
        out.name(name);
        out.text(value);
    };
    const auto number = [&out](const char* name, double value) {
        out.name(name);
        out.number(value);
    };
    out.open('{');
    text("outcome", outcome_);
    text("error", error_);
    number("records", static_cast<double>(records_));
    number("bytes", static_cast<double>(script_.size()));
    number("duration", seconds_);
    text("script", redact_(startOfScript(script_)));
    out.name("isScriptCut");
    out.boolean(script_.size() > mostScript);
    writeTable(recordsOf(loaded_, mostRows), redact_, out);
    out.name("changes");
    out.open('[');
    for (const StoreChange& change : changes_.listed)
        writeChange(change, redact_, out);
    out.close(']');
    number("changesLeftOut", static_cast<double>(changes_.leftOut));
    number("same", static_cast<double>(changes_.same));
    text("action", redact_(action_));
    text("actionError", actionError_);
    out.name("commands");
    writeTexts(commands_, out);
    out.close('}');
    return out.take();
}

}  // namespace workbench
