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
#include "workbench/cli/parameter_values.h"
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

std::string memoryText(lumo::Host& host, const std::optional<LiveInstance::SharedMemory>& bound) {
    const std::array memories{&host.memories.scene, &host.memories.global,
                              &host.memories.distributed};
    const bool isKnown =
        bound && bound->type >= 0 && static_cast<std::size_t>(bound->type) < memories.size();
    if (!isKnown) return "";
    const std::string* const text =
        memories[static_cast<std::size_t>(bound->type)]->find(bound->variable);
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
      memory_(instance.sharedMemory()),
      memoryBefore_(memoryText(host, memory_)) {
    // The child binds by the parameters, which may have changed since this one was bound.
    if (isForSharedMemory() && memory_) {
        setParameter(parameters_, record_, "shmtype", std::to_string(memory_->type));
        setParameter(parameters_, record_, "shmvar", memory_->variable);
    }
}

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
    error_ = redact_(printable(intake::trimmed(errors, " \r\n")));
    switch (static_cast<ExitStatus>(status)) {
        case ExitStatus::Loaded:
            records_ = writtenRecords(script_, parameters_, record_);
            outcome_ = records_ == 0 ? "empty" : "loaded";
            error_.clear();
            break;
        case ExitStatus::NotExecuted:
            outcome_ = "notExecuted";
            break;
        case ExitStatus::LoadFailed:
        case ExitStatus::Usage:
            outcome_ = "failed";
            break;
        default:
            outcome_ = "late";
            if (error_.empty()) error_ = "There was no answer in time, or too long a one.";
    }
    const bool isUnbound = isForSharedMemory() && !memory_ && outcome_ != "late";
    if (isUnbound && outcome_ != "failed") {
        outcome_ = "notExecuted";
        error_ = "No shared memory is bound; it is bound when its name or its type changes.";
        records_ = 0;
    }
    if (!isForSharedMemory()) written_.execute(script_);
}

/// What was loaded replaces the text, also the nothing of a load that failed.
void DryRun::compareMemory() {
    if (!isForSharedMemory() || !memory_ || outcome_ == "late" || outcome_ == "notExecuted") return;
    if (script_ == memoryBefore_) {
        ++changes_.same;
        return;
    }
    changes_.listed.insert(changes_.listed.begin(),
                           {StoreChange::Kind::Changed, "shared memory", memory_->variable,
                            fitted(memoryBefore_, longestCell), fitted(script_, longestCell), 0});
}

bool DryRun::concerns(const cobalt::Field& field) const {
    if (!action_.empty() || written_.find(field.name()) != nullptr) return true;
    if (field.origin().writer == writer_) return true;
    const cobalt::Entries& entries = field.value().entries();
    return std::any_of(entries.begin(), entries.end(), [this](const cobalt::Entry& entry) {
        return entry.origin.writer == writer_;
    });
}

/// As the plugin goes on after each answer: a load that failed sets the number of records to 0, and
/// the post-update action is carried out whatever came of it.
void DryRun::compareWith(const cobalt::Store& before) {
    if (outcome_ == "late") return;
    const cobalt::Origin origin{writer_, momentNow()};
    cobalt::Store after = before.copyIf([](const cobalt::Field&) { return true; });
    if (!isForSharedMemory()) after.execute(script_, origin);
    act(after);
    changes_ = compareStores(before, after, origin, mostChanges);
    compareMemory();
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
    writeTable(records_ == 0 ? Table{} : recordsOf(written_, mostRows), redact_, out);
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
