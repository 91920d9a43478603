#pragma once

// The instances of a scene file, live. Owned by the command; host's thread only.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/cli/Table.h"
#include "workbench/cli/run/LiveInstance.h"

namespace workbench {

class LiveScene {
public:
    /// Places the instances and starts them. Throws UsageError.
    LiveScene(lumo::Host& host, const lumo::Plugin& plugin, const SceneFile& scene);

    /// Takes up a changed scene: instances that are new, gone or changed. Returns what has become
    /// of them, a sentence each. Throws UsageError, and changes nothing, when a value does not fit.
    std::vector<std::string> take(const SceneFile& scene);

    /// Takes up another scene in the place of this one: all its instances are new. Throws
    /// UsageError, and changes nothing, when a value does not fit.
    void replace(const SceneFile& scene);

    /// Places and starts one more.
    LiveInstance& add(const std::string& name, const lumo::Record& values);

    /// It stays the same instance: nothing is loaded anew.
    void rename(LiveInstance& instance, const std::string& name);

    /// What it has written stays in the store.
    void remove(const LiveInstance& instance);

    /// Runs a frame of each instance. Returns what has happened.
    std::vector<LoadEvent> runFrame(double now);

    std::vector<InstanceState> statesAt(double now) const;

    /// What hides the secrets of all instances, also of those that are gone.
    Redaction redaction() const;

    /// The instance of that name, or null.
    LiveInstance* find(std::string_view name) const;

    /// Of one that has written into the store, also after it is gone; empty for no writer.
    const std::string& nameOfWriter(std::uint32_t writer) const { return writers_[writer]; }

    /// That of its last load that wrote into the store; 0 when it is gone.
    std::uint32_t lastMomentOf(std::uint32_t writer) const;

    std::vector<std::unique_ptr<LiveInstance>>& instances() { return instances_; }

    /// The file that it comes from; empty for none.
    const std::string& file() const { return file_; }
    void setFile(const std::string& file) { file_ = file; }

    /// What `explain` is to know of an instance in this scene, as variables of its process.
    std::vector<std::string> variablesFor(const LiveInstance& instance) const;

    /// How the process ends: as the first instance whose last load did not end well says. Tells of
    /// those that should have had an answer.
    ExitStatus status() const;

    /// What older loads left in the store, for people; without rows when there is nothing.
    Table leftOverTable() const;

private:
    using Instances = std::vector<std::unique_ptr<LiveInstance>>;

    std::unique_ptr<LiveInstance> make(const SceneFile& scene, const StoredInstance& stored);
    void noteName(const LiveInstance& instance);
    void noteGone(const LiveInstance& instance);
    std::vector<std::uint32_t> lastMoments() const;
    std::pair<std::string, std::string> recordsOf(std::uint32_t writer) const;
    void noteLeftOver(std::vector<LoadEvent>& events);

    lumo::Host& host_;
    const lumo::Plugin& plugin_;
    std::string file_;
    std::vector<std::string> writers_{""};  // the names of all instances there ever were
    Instances instances_;
    std::uint64_t firstRevision_ = 1;             // above that of any that is gone
    Redaction formerSecrets_{probe::Settings{}};  // of instances that are gone
};

}  // namespace workbench
