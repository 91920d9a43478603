#pragma once

// An instance of a scene that runs: the plugin's instance, the watch over its loads, and what is
// known of them. Owned by its LiveScene; host's thread only.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/cli/LoadWatch.h"
#include "workbench/cli/Redaction.h"
#include "workbench/cli/run/InstanceHistory.h"
#include "workbench/cli/scene_file.h"

namespace workbench {

/// Something that befell a load: it was answered, or it has become late.
struct LoadEvent {
    LoadReport report;
    bool isFirst = false;      // there was no answer before it
    bool isNews = false;       // it is bad or late, which the one before was not
    bool isRecovery = false;   // it is good and in time, which the one before was not
    bool wasEmpty = false;     // the load before
    std::string plainError;    // as the plugin says it; of a load that failed
    std::size_t instance = 0;  // its place in the scene
    std::uint32_t writer = 0;
    std::optional<std::size_t> newRecords;   // that were not in the load before, where known
    std::optional<std::size_t> goneRecords;  // that were
    std::vector<WrittenNumber> numbers;      // that were written
};

class LiveInstance {
public:
    /// Places it with the values of the scene. Throws UsageError.
    LiveInstance(lumo::Host& host, const lumo::Plugin& plugin, const SceneFile& scene,
                 const StoredInstance& stored, std::uint32_t writer);

    /// Gives it other values, and its revisions other numbers, before it is started.
    void setAll(const lumo::Record& values);
    void startRevisionsAt(std::uint64_t revision) { revision_ = revision; }

    /// What the host does with an instance that comes from a scene: first load() for each, then
    /// start() for each.
    void load() { instance_.load(); }
    void start();

    /// Presses a button of the plugin.
    void execAction(int32_t action) { instance_.execAction(action); }

    /// Gives it the values of a changed scene, as a user would that edits them one by one. Whether
    /// any had changed. Throws UsageError, and changes nothing.
    bool take(const SceneFile& scene, const StoredInstance& stored);

    /// Sets parameters as a user of the host's editor does. Throws UsageError, and changes nothing.
    void edit(const std::vector<std::pair<std::string, std::string>>& changes);

    /// Edits that are kept back: a page shows them, and the plugin knows nothing of them. Throws
    /// UsageError, and changes nothing.
    void editDraft(const std::vector<std::pair<std::string, std::string>>& changes);
    void useDraft();
    void discardDraft();
    bool isDraft() const { return !draft_.empty(); }

    /// Rises with each change of a parameter by a user or by a changed scene.
    std::uint64_t revision() const { return revision_; }

    /// Lets the plugin say which of its parameters the editor shows just now, with what a draft
    /// makes of them.
    void askWhatIsShown();

    /// What hides the secrets that its parameters have at present.
    const Redaction& presentRedaction() const { return present_; }

    /// What hides all secrets that it ever had: an answer may still tell of an old one.
    const Redaction& redaction() const { return redact_; }

    /// Where its text goes in the mode Shared Memory; nothing as long as none is bound.
    struct SharedMemory {
        int32_t type = 0;  // as the parameter shmtype
        std::string variable;
    };
    const std::optional<SharedMemory>& sharedMemory() const { return sharedMemory_; }

    /// Runs a frame. Adds what has happened to `events`, without what is left over.
    void runFrame(double now, std::vector<LoadEvent>& events);

    InstanceState stateAt(double now) const;
    const std::string& name() const { return name_; }
    void rename(const std::string& name) { name_ = name; }
    const lumo::Record& record() const { return instance_.record(); }

    /// What the user has set, and the plugin has changed since: the record without what the watch
    /// over the loads keeps in it.
    lumo::Record values() const;

    /// The same with the draft.
    lumo::Record shownValues() const;

    /// What the user has set, also in a draft, whatever the plugin has made of it. It does not
    /// change any more: with a change there is another one. To be read on any thread.
    const std::shared_ptr<const lumo::Record>& chosenValues() const { return shownChosen_; }
    InstanceHistory& history() { return history_; }
    const InstanceHistory& history() const { return history_; }
    const std::optional<ExitStatus>& lastStatus() const { return lastStatus_; }
    bool loadsAutomatically() const;
    std::uint32_t writer() const { return writer_; }
    std::uint32_t lastMoment() const { return watch_ ? watch_->lastMoment() : 0; }
    std::string redacted(std::string text) const { return redact_(std::move(text)); }

private:
    using Settings = std::vector<std::pair<std::string, std::string>>;

    std::string target() const;
    void apply(const lumo::Record& wanted);
    void set(const Settings& settings, lumo::Record& record) const;
    void noteChosen();
    void noteSecrets();
    void noteBinding();
    std::optional<double> period() const;
    LoadEvent eventOf(LoadReport report) const;
    LoadEvent answered(Outcome outcome, double now);
    void compareRecords(Outcome& outcome, LoadEvent& event);

    lumo::Host& host_;
    const std::uint32_t writer_;
    std::string name_;
    lumo::Instance instance_;
    lumo::Record chosen_;                              // by the user or the scene
    std::shared_ptr<const lumo::Record> shownChosen_;  // the same with the draft
    Settings draft_;                                   // in their order, each name once
    lumo::Record stored_;  // the values of the scene; the plugin changes some of its own
    std::uint64_t revision_ = 1;
    Redaction present_;
    Redaction redact_;
    std::optional<SharedMemory> sharedMemory_;
    std::optional<LoadWatch> watch_;  // from the start on
    InstanceHistory history_;
    std::optional<std::vector<std::uint64_t>> lastMarks_;  // of the last load that wrote records
    std::optional<ExitStatus> lastStatus_;
};

}  // namespace workbench
