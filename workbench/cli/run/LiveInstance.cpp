#include "workbench/cli/run/LiveInstance.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "formats/text/trim.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/record_values.h"

namespace workbench {

namespace {

constexpr float shortestPeriod = 0.001F;  // of one that loads at all

}  // namespace

LiveInstance::LiveInstance(lumo::Host& host, const lumo::Plugin& plugin, const SceneFile& scene,
                           const StoredInstance& stored, std::uint32_t writer)
    : host_(host),
      writer_(writer),
      name_(stored.name),
      instance_(host, plugin, stored.name),
      chosen_(host.parameters),
      stored_(host.parameters),
      present_(probe::Settings{}),
      redact_(present_) {
    lumo::Record values(host.parameters);
    scene.restore(stored, host.parameters, values);
    setAll(values);
}

void LiveInstance::setAll(const lumo::Record& values) {
    for (lumo::Record* const record : {&stored_, &chosen_, &instance_.record()})
        copyValues(host_.parameters, values, *record);
    noteChosen();
    noteSecrets();
}

void LiveInstance::noteChosen() {
    auto chosen = std::make_shared<lumo::Record>(host_.parameters);
    copyValues(host_.parameters, chosen_, *chosen);
    set(draft_, *chosen);
    shownChosen_ = std::move(chosen);
}

void LiveInstance::noteSecrets() {
    present_ = Redaction(probeSettings(host_.parameters, stored_));
    redact_.include(present_);
    if (isDraft()) present_ = Redaction(probeSettings(host_.parameters, shownValues()));
    redact_.include(present_);
}

/// As the plugin binds: an empty name leaves the one before.
void LiveInstance::noteBinding() {
    const std::string variable = textParameter("shmvar", host_.parameters, record());
    const auto type = host_.parameters.find("shmtype");
    if (!sharedMemory_ && variable.empty()) return;
    if (!sharedMemory_) sharedMemory_.emplace();
    if (type) sharedMemory_->type = record().integer(*type);
    if (!variable.empty()) sharedMemory_->variable = variable;
}

void LiveInstance::start() {
    instance_.afterLoad();
    constexpr int32_t sharedMemory = 4;
    const auto mode = host_.parameters.find("mode");
    if (mode && record().integer(*mode) == sharedMemory) noteBinding();
    watch_.emplace(host_, instance_, false);
    watch_->follow(writer_);
    history_.setPeriod(period());
}

bool LiveInstance::take(const SceneFile& scene, const StoredInstance& stored) {
    lumo::Record wanted(host_.parameters);
    scene.restore(stored, host_.parameters, wanted);
    const std::uint64_t before = revision_;
    if (isDraft()) discardDraft();
    copyValues(host_.parameters, wanted, chosen_);
    noteChosen();
    apply(wanted);
    return revision_ != before;
}

lumo::Record LiveInstance::values() const {
    lumo::Record values(host_.parameters);
    copyValues(host_.parameters, record(), values);
    const auto showData = host_.parameters.find("show_data");
    if (showData) values.setInteger(*showData, stored_.integer(*showData));
    return values;
}

lumo::Record LiveInstance::shownValues() const {
    lumo::Record shown = values();
    set(draft_, shown);
    return shown;
}

void LiveInstance::set(const Settings& settings, lumo::Record& record) const {
    for (const auto& [name, value] : settings)
        setParameter(host_.parameters, record, name, value);
}

void LiveInstance::edit(const Settings& changes) {
    lumo::Record wanted = values();
    set(changes, wanted);
    set(changes, chosen_);
    noteChosen();
    copyValues(host_.parameters, values(), stored_);  // the plugin may have changed some of its own
    apply(wanted);
}

void LiveInstance::editDraft(const Settings& changes) {
    lumo::Record wanted = shownValues();
    set(changes, wanted);
    for (const auto& change : changes) {
        std::erase_if(draft_, [&](const auto& each) { return each.first == change.first; });
        draft_.push_back(change);
    }
    ++revision_;
    noteChosen();
    noteSecrets();
}

void LiveInstance::useDraft() {
    edit(std::exchange(draft_, {}));
    ++revision_;
    noteSecrets();
}

void LiveInstance::discardDraft() {
    draft_.clear();
    ++revision_;
    noteChosen();
    noteSecrets();
}

/// The plugin looks at its record alone: what a draft makes of it stands there as long as it looks.
void LiveInstance::askWhatIsShown() {
    if (!isDraft()) return instance_.guiStatus();
    lumo::Record live(host_.parameters);
    copyValues(host_.parameters, record(), live);
    copyValues(host_.parameters, shownValues(), instance_.record());
    instance_.guiStatus();
    copyValues(host_.parameters, live, instance_.record());
}

/// Each change for itself, as the editor tells the plugin of it.
void LiveInstance::apply(const lumo::Record& wanted) {
    const auto showData = host_.parameters.find("show_data");
    bool isChanged = false;
    forEachValue(host_.parameters, [&](const lumo::Parameter& parameter, int32_t index) {
        if (isSameValue(parameter, index, stored_, wanted)) return;
        isChanged = true;
        copyValue(parameter, index, wanted, stored_);
        if (index == showData) return watch_->showConsole(wanted.integer(index) != 0);
        copyValue(parameter, index, wanted, instance_.record());
        instance_.changed(index);
        if (parameter.name == "shmvar" || parameter.name == "shmtype") noteBinding();
    });
    if (!isChanged) return;
    ++revision_;
    noteSecrets();
    history_.setPeriod(period());
}

bool LiveInstance::loadsAutomatically() const {
    const auto autoLoad = host_.parameters.find("autoLoad");
    return autoLoad && record().integer(*autoLoad) != 0;
}

std::optional<double> LiveInstance::period() const {
    const auto interval = host_.parameters.find("autoLoadInterval");
    if (!loadsAutomatically() || !interval) return std::nullopt;
    const float seconds = record().number(*interval);
    if (!(seconds > shortestPeriod)) return std::nullopt;
    return static_cast<double>(seconds);
}

LoadEvent LiveInstance::eventOf(LoadReport report) const {
    const auto& last = history_.last();
    LoadEvent event;
    event.report = std::move(report);
    event.report.instance = name();
    event.writer = writer_;
    event.isFirst = !last;
    event.wasEmpty = last && last->outcome == LoadOutcome::Empty;
    return event;
}

/// A record that has become another counts as a new one and as one that is gone.
void LiveInstance::compareRecords(Outcome& outcome, LoadEvent& event) {
    if (outcome.failed || outcome.notExecuted || outcome.notStored) return;
    if (outcome.marks && lastMarks_) {
        std::vector<std::uint64_t> difference;
        std::set_difference(outcome.marks->begin(), outcome.marks->end(), lastMarks_->begin(),
                            lastMarks_->end(), std::back_inserter(difference));
        event.newRecords = difference.size();
        event.goneRecords = lastMarks_->size() + difference.size() - outcome.marks->size();
    }
    lastMarks_ = std::move(outcome.marks);
}

LoadEvent LiveInstance::answered(Outcome outcome, double now) {
    const bool wasGood =
        !history_.isLate() && (!history_.last() || isGood(history_.last()->outcome));
    LoadEvent event = eventOf(reportOf(outcome));
    event.report.error = redact_(event.report.error);
    event.plainError = redact_(outcome.error);
    history_.answered(event.report, now);
    event.isNews = wasGood && !isGood(event.report.outcome);
    event.isRecovery = !wasGood && isGood(event.report.outcome) && !history_.isLate();
    lastStatus_ = statusOf(outcome);
    compareRecords(outcome, event);
    event.numbers = std::move(outcome.numbers);
    return event;
}

void LiveInstance::runFrame(double now, std::vector<LoadEvent>& events) {
    auto outcome = watch_->runFrame();
    if (outcome) events.push_back(answered(std::move(*outcome), now));
    for (auto begun = watch_->loadsBegun(); begun > 0; --begun)
        history_.began(now);
    const bool wasLate = history_.isLate();
    for (auto late = history_.becameLate(now); late > 0; --late) {
        LoadReport report;
        report.outcome = LoadOutcome::Late;
        report.recordsBefore = history_.last() ? history_.last()->records : 0;
        report.seconds = history_.underWay(now).value_or(0);
        report.error = "no answer yet";
        report.time = std::chrono::system_clock::now();
        events.push_back(eventOf(std::move(report)));
        events.back().isNews = !wasLate;
    }
}

std::string LiveInstance::target() const {
    constexpr int32_t sharedMemory = 4;
    const auto index = host_.parameters.find("mode");
    const int32_t mode = index ? record().integer(*index) : 0;
    if (mode == sharedMemory)
        return "shared memory " + textParameter("shmvar", host_.parameters, record());
    const std::string field = textParameter("table", host_.parameters, record());
    if (!index || mode < 0) return field;
    const std::vector<std::string>& modes = host_.parameters.at(*index).entries;
    const auto entry = static_cast<std::size_t>(mode);
    return entry < modes.size() ? field + ", " + std::string(intake::trimmed(modes[entry], " "))
                                : field;
}

InstanceState LiveInstance::stateAt(double now) const {
    InstanceState state = history_.stateAt(now);
    state.name = name();
    state.target = target();
    state.isDraft = isDraft();
    state.writer = writer();
    state.revision = revision();
    return state;
}

}  // namespace workbench
