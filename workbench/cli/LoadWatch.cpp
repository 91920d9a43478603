#include "workbench/cli/LoadWatch.h"

#include <algorithm>
#include <utility>

#include "workbench/cli/UsageError.h"
#include "workbench/cli/moments.h"
#include "workbench/cobalt/Expression.h"

namespace workbench {

namespace {

constexpr int32_t excel = 0;  // query types whose empty results look like the fallback text
constexpr int32_t sql = 1;
constexpr int32_t sharedMemory = 4;  // target mode

std::string_view withoutLineEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

std::string wordsFor(const cobalt::ScriptError* error) {
    if (error == nullptr) return "";
    return "line " + std::to_string(error->line) + ", column " + std::to_string(error->column) +
           ": " + error->message;
}

}  // namespace

ExitStatus statusOf(const Outcome& outcome) {
    if (outcome.failed) return ExitStatus::LoadFailed;
    return outcome.notStored || outcome.notExecuted ? ExitStatus::NotExecuted : ExitStatus::Loaded;
}

void LoadWatch::ConsoleField::setValue(const char* text) {
    watch_.judge(text);
    if (visible != nullptr) visible->setValue(text);
}

LoadWatch::LoadWatch(lumo::Host& host, lumo::Instance& instance, bool keepsScripts)
    : host_(host),
      instance_(instance),
      keepsScripts_(keepsScripts),
      queryMode_(indexOf("queryMode")),
      targetMode_(indexOf("mode")),
      prefix_(indexOf("varsPrefix")),
      source_(indexOf("filename")),
      action_(host.parameters.find("postAction")) {
    const int32_t showData = indexOf("show_data");
    userSeesConsole_ = instance.record().integer(showData) != 0;
    instance.record().setInteger(showData, 1);
}

void LoadWatch::follow(std::uint32_t writer) {
    countsRecords_ = true;
    origin_ = {writer, 0};
}

int32_t LoadWatch::indexOf(const char* name) const {
    const auto index = host_.parameters.find(name);
    if (!index)
        throw UsageError(std::string("This plugin cannot be watched: it has no parameter \"") +
                         name + "\".");
    return *index;
}

std::string LoadWatch::prefixed(const char* name) const {
    return std::string(instance_.record().text(prefix_)) + name;
}

std::optional<Outcome> LoadWatch::runFrame() {
    outcome_ = {};
    answered_ = false;
    loadsBegun_ = -host_.fontEncodingQueries;
    host_.memories.takeLastSet();
    host_.store.setObserver(this);
    instance_.execPerField();
    host_.store.setObserver(nullptr);
    loadsBegun_ += host_.fontEncodingQueries;
    if (!answered_) return std::nullopt;
    finishSharedMemory();
    finishAction();
    if (outcome_.failed) forgetRecords();
    return std::move(outcome_);
}

LoadWatch::LookUp LoadWatch::lookedUp(std::string_view name, DataField* found) {
    if (name != prefixed("READER_CONSOLE")) return {found, true};
    console_.visible = userSeesConsole_ ? found : nullptr;
    return {&console_, userSeesConsole_};
}

cobalt::Origin LoadWatch::executing() {
    if (origin_.writer == 0) return {};
    origin_.moment = std::max(origin_.moment + 1, momentNow());
    return origin_;
}

void LoadWatch::executed(std::string_view script, const cobalt::ScriptError* error) {
    outcome_.notExecuted = error != nullptr;
    outcome_.scriptFault = wordsFor(error);
    note(script);
    if (error != nullptr) {
        forgetRecords();
        outcome_.numbers.clear();
    }
}

void LoadWatch::forgetRecords() {
    outcome_.records = 0;
    outcome_.marks.reset();
}

void LoadWatch::note(std::string_view written) {
    if (keepsScripts_) outcome_.script = written;
    outcome_.bytes = written.size();
    if (!countsRecords_) return;
    const WrittenRecords records(written, host_.parameters, instance_.record());
    outcome_.records = records.count();
    outcome_.marks = records.marks();
    outcome_.numbers = records.numbers();
}

void LoadWatch::actionDone(const cobalt::ScriptError* error) {
    outcome_.actionFault = wordsFor(error);
}

// A failed load puts the fallback text and the error text on the console. Without an error text it
// looks like the script of an empty SQL result, which only the query type tells apart.
void LoadWatch::judge(std::string_view consoleText) {
    answered_ = true;
    const std::string fallback = prefixed("READER_NUM_RECORDS=0;");
    if (!consoleText.starts_with(fallback)) return;
    const int32_t queryMode = instance_.record().integer(queryMode_);
    const bool mayBeEmptyResult = queryMode == excel || queryMode == sql;
    if (consoleText == fallback && mayBeEmptyResult) return;
    outcome_.failed = true;
    outcome_.error = withoutLineEnd(consoleText.substr(fallback.size()));
    if (outcome_.error.empty())
        outcome_.error = "Could not load \"" + std::string(instance_.record().text(source_)) + "\"";
}

void LoadWatch::finishSharedMemory() {
    if (instance_.record().integer(targetMode_) != sharedMemory) return;
    const std::string* stored = host_.memories.takeLastSet();
    outcome_.notStored = stored == nullptr;
    if (stored != nullptr) note(*stored);
}

// The plugin carries out nothing in the place of an action that cannot be read, and says so only
// when it gets it.
void LoadWatch::finishAction() {
    if (!action_ || !outcome_.actionFault.empty()) return;
    const std::string_view action = instance_.record().text(*action_);
    if (action != parsedAction_) {
        parsedAction_ = action;
        const auto fault = cobalt::Expression().parse(action);
        actionFault_ = wordsFor(fault ? &*fault : nullptr);
    }
    outcome_.actionFault = actionFault_;
}

}  // namespace workbench
