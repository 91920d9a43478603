#include "workbench/cli/serve/DryRun.h"

#include <algorithm>
#include <array>

#include "formats/text/trim.h"
#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/FrameClock.h"
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

constexpr std::size_t mostChanges = 500;
constexpr std::size_t mostRows = 200;
constexpr std::size_t longestCell = 200;  // columns

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

std::string wordsOf(const cobalt::ScriptError& error) {
    return "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) +
           ": " + error.message;
}

}  // namespace

DryRun::DryRun(lumo::Host& host, const LiveInstance& instance, const Options& options,
               const Redaction& secrets)
    : parameters_(host.parameters),
      plugin_(options.plugin),
      fontEncoding_(options.fontEncoding),
      writer_(instance.writer()),
      record_(instance.shownValues()),
      settings_(probeSettings(host.parameters, record_)),
      redact_(settings_),
      action_(textParameter("postAction", host.parameters, record_)),
      memory_(instance.sharedMemory()),
      memoryBefore_(memoryText(host, memory_)) {
    redact_.include(secrets);
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
    result_.seconds = clock.elapsedSeconds();
    result_.script = std::move(answer.out);
    judge(answer.status, answer.err);
}

void DryRun::judge(int status, const std::string& errors) {
    result_.error = redact_(printable(intake::trimmed(errors, " \r\n")));
    switch (static_cast<ExitStatus>(status)) {
        case ExitStatus::Loaded:
            result_.records = writtenRecords(result_.script, parameters_, record_);
            result_.outcome = result_.records == 0 ? "empty" : "loaded";
            result_.error.clear();
            break;
        case ExitStatus::NotExecuted:
            result_.outcome = "notExecuted";
            break;
        case ExitStatus::LoadFailed:
        case ExitStatus::Usage:
            result_.outcome = "failed";
            break;
        default:
            result_.outcome = "late";
            if (result_.error.empty())
                result_.error = "There was no answer in time, or too long a one.";
    }
    const bool isUnbound = isForSharedMemory() && !memory_ && result_.outcome != "late";
    if (isUnbound && result_.outcome != "failed") {
        result_.outcome = "notExecuted";
        result_.error = "No shared memory is bound; it is bound when its name or its type changes.";
        result_.records = 0;
    }
    if (!isForSharedMemory()) written_.execute(result_.script);
}

/// What was loaded replaces the text, also the nothing of a load that failed.
void DryRun::compareMemory() {
    if (!isForSharedMemory() || !memory_ || result_.outcome == "late" ||
        result_.outcome == "notExecuted")
        return;
    if (result_.script == memoryBefore_) {
        ++result_.changes.same;
        return;
    }
    result_.changes.listed.insert(
        result_.changes.listed.begin(),
        {StoreChange::Kind::Changed, "shared memory", memory_->variable,
         fitted(memoryBefore_, longestCell), fitted(result_.script, longestCell), 0});
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
    if (result_.outcome == "late") return;
    const cobalt::Origin origin{writer_, momentNow()};
    cobalt::Store after = before.copyIf([](const cobalt::Field&) { return true; });
    if (!isForSharedMemory()) after.execute(result_.script, origin);
    act(after);
    result_.changes = compareStores(before, after, origin, mostChanges);
    compareMemory();
}

void DryRun::act(cobalt::Store& store) {
    cobalt::Expression action;
    auto error = action.parse(action_);
    const auto note = [this](const std::string& command) {
        result_.commands.push_back(redact_(toUtf8(command)));
        return std::string();
    };
    if (!error) error = action.execute(store, note, {});
    if (error) result_.actionError = wordsOf(*error);
}

std::string DryRun::json() {
    if (result_.records > 0) result_.table = recordsOf(written_, mostRows);
    result_.action = action_;
    return dryRunJson(result_, redact_);
}

}  // namespace workbench
