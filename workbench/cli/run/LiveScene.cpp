#include "workbench/cli/run/LiveScene.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "workbench/cli/moments.h"
#include "workbench/cli/run/duration_text.h"
#include "workbench/cli/run/left_over.h"
#include "workbench/cli/scene_child.h"

namespace workbench {

namespace {

/// So that a scene with a value that does not fit changes nothing.
void requireFitting(const SceneFile& scene, const lumo::ParameterTable& parameters) {
    for (const StoredInstance& stored : scene.instances) {
        lumo::Record record(parameters);
        scene.restore(stored, parameters, record);
    }
}

ExitStatus statusOf(const LiveInstance& instance) {
    if (instance.lastStatus()) return *instance.lastStatus();
    if (!instance.loadsAutomatically()) return ExitStatus::Loaded;
    std::fprintf(stderr, "%s: no answer yet\n", instance.name().c_str());
    return ExitStatus::NoAnswer;
}

}  // namespace

LiveScene::LiveScene(lumo::Host& host, const lumo::Plugin& plugin, const SceneFile& scene)
    : host_(host), plugin_(plugin), file_(scene.file) {
    for (const StoredInstance& stored : scene.instances)
        instances_.push_back(make(scene, stored));
    for (const auto& instance : instances_)
        instance->load();
    for (const auto& instance : instances_)
        instance->start();
}

std::unique_ptr<LiveInstance> LiveScene::make(const SceneFile& scene,
                                              const StoredInstance& stored) {
    const auto writer = static_cast<std::uint32_t>(writers_.size());
    writers_.push_back(stored.name);
    auto made = std::make_unique<LiveInstance>(host_, plugin_, scene, stored, writer);
    made->startRevisionsAt(firstRevision_);
    return made;
}

std::vector<std::string> LiveScene::take(const SceneFile& scene) {
    requireFitting(scene, host_.parameters);
    std::vector<std::string> told;
    Instances former = std::exchange(instances_, {});
    for (const StoredInstance& stored : scene.instances) {
        const auto known = std::find_if(former.begin(), former.end(), [&](const auto& instance) {
            return instance != nullptr && instance->name() == stored.name;
        });
        if (known != former.end()) {
            if ((*known)->take(scene, stored)) told.push_back(stored.name + ": changed");
            instances_.push_back(std::move(*known));
            continue;
        }
        instances_.push_back(make(scene, stored));
        instances_.back()->load();
        instances_.back()->start();
        told.push_back(stored.name + ": new");
    }
    for (const auto& instance : former) {
        if (instance == nullptr) continue;
        told.push_back(instance->name() + ": gone");
        noteGone(*instance);
    }
    return told;
}

void LiveScene::replace(const SceneFile& scene) {
    requireFitting(scene, host_.parameters);
    while (!instances_.empty())
        remove(*instances_.back());
    take(scene);
}

LiveInstance& LiveScene::add(const std::string& name, const lumo::Record& values) {
    instances_.push_back(make({"", {}}, {name, {}}));
    LiveInstance& added = *instances_.back();
    added.setAll(values);
    added.load();
    added.start();
    return added;
}

void LiveScene::rename(LiveInstance& instance, const std::string& name) {
    instance.rename(name);
    writers_[instance.writer()] = name;
    noteName(instance);
    instance.startRevisionsAt(firstRevision_);
}

/// Its name may become another's: who knows the present one must not take the other for it.
void LiveScene::noteName(const LiveInstance& instance) {
    firstRevision_ = std::max(firstRevision_, instance.revision() + 1);
}

void LiveScene::noteGone(const LiveInstance& instance) {
    formerSecrets_.include(instance.redaction());
    noteName(instance);
}

void LiveScene::remove(const LiveInstance& instance) {
    noteGone(instance);
    std::erase_if(instances_, [&](const auto& each) { return each.get() == &instance; });
}

std::vector<LoadEvent> LiveScene::runFrame(double now) {
    std::vector<LoadEvent> events;
    for (std::size_t i = 0; i < instances_.size(); ++i) {
        const std::size_t known = events.size();
        instances_[i]->runFrame(now, events);
        for (std::size_t k = known; k < events.size(); ++k)
            events[k].instance = i;
    }
    if (!events.empty()) noteLeftOver(events);
    return events;
}

/// Of an instance that is gone everything is left over.
std::vector<std::uint32_t> LiveScene::lastMoments() const {
    std::vector<std::uint32_t> moments(writers_.size(), 0);
    for (const auto& instance : instances_)
        moments[instance->writer()] = instance->lastMoment();
    return moments;
}

// The store is gone through once, however many loads there were.
void LiveScene::noteLeftOver(std::vector<LoadEvent>& events) {
    const std::vector<LeftOver> found = countLeftOver(host_.store.core(), lastMoments());
    for (const auto& instance : instances_)
        instance->history().setLeftOver(found[instance->writer()].count);
    for (LoadEvent& event : events) {
        const LeftOver& own = found[instances_[event.instance]->writer()];
        event.report.leftOver = own.count;
        event.report.leftOverAge = own.count == 0 ? 0 : secondsSince(own.oldest);
    }
}

std::vector<std::string> LiveScene::variablesFor(const LiveInstance& instance) const {
    const cobalt::Origin last{instance.writer(), instance.lastMoment()};
    return {std::string(sceneFileVariable) + "=" + file_,
            std::string(leftOverVariable) + "=" + sentenceOfLeftOver(host_.store.core(), last)};
}

std::vector<InstanceState> LiveScene::statesAt(double now) const {
    std::vector<InstanceState> states;
    for (const auto& instance : instances_)
        states.push_back(instance->stateAt(now));
    return states;
}

Redaction LiveScene::redaction() const {
    std::vector<const Redaction*> live;
    for (const auto& instance : instances_)
        live.push_back(&instance->redaction());
    Redaction all = formerSecrets_;
    all.include(live);
    return all;
}

ExitStatus LiveScene::status() const {
    ExitStatus first = ExitStatus::Loaded;
    for (const auto& instance : instances_) {
        const ExitStatus status = statusOf(*instance);
        if (first == ExitStatus::Loaded) first = status;
    }
    return first;
}

Table LiveScene::leftOverTable() const {
    Table table{"Left over from older loads",
                {"instance", "count", "age", "records", "before", "fields and entries"},
                {},
                0};
    const std::vector<std::uint32_t> moments = lastMoments();
    const std::vector<LeftOver> found = countLeftOver(host_.store.core(), moments);
    for (std::uint32_t writer = 1; writer < writers_.size(); ++writer) {
        if (found[writer].count == 0) continue;
        const auto [records, before] = recordsOf(writer);
        table.rows.push_back({writers_[writer], std::to_string(found[writer].count),
                              durationText(secondsSince(found[writer].oldest)), records, before,
                              namesOfLeftOver(host_.store.core(), {writer, moments[writer]})});
    }
    return table;
}

LiveInstance* LiveScene::find(std::string_view name) const {
    const auto found = std::find_if(instances_.begin(), instances_.end(),
                                    [&](const auto& each) { return each->name() == name; });
    return found == instances_.end() ? nullptr : found->get();
}

std::uint32_t LiveScene::lastMomentOf(std::uint32_t writer) const {
    const auto live = std::find_if(instances_.begin(), instances_.end(),
                                   [&](const auto& each) { return each->writer() == writer; });
    return live == instances_.end() ? 0 : (*live)->lastMoment();
}

/// How many records it loaded last, and how many before that changed; empty when that is not known.
std::pair<std::string, std::string> LiveScene::recordsOf(std::uint32_t writer) const {
    const auto live = std::find_if(instances_.begin(), instances_.end(),
                                   [&](const auto& each) { return each->writer() == writer; });
    if (live == instances_.end() || !(*live)->history().last()) return {};
    const InstanceHistory& history = (*live)->history();
    const auto before = history.recordsBefore();
    return {std::to_string(history.last()->records), before ? std::to_string(*before) : ""};
}

}  // namespace workbench
