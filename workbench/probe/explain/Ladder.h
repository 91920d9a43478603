#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/Settings.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// What a load goes through, in order.
enum class Stage {
    Settings,
    Address,
    Fetched,
    Format,
    Selection,
    Key,
    Rows,
    Script,
    Store,
    Action
};
inline constexpr std::size_t stageCount = 10;

/// Skipped: it was not looked at.
enum class State { Skipped, Ok, Warning, Failed };

/// One stage of a load. The texts are for people, and show no secrets.
struct Step {
    State state = State::Skipped;
    std::string seen;             // what is there, in a few words
    std::string place;            // the part of `seen` that the cause is about; empty for all of it
    std::size_t placeOffset = 0;  // of the place in `seen`, in bytes
    std::string cause;            // in whole sentences, as is the next
    std::string next;             // what to do about it
};

/// A way to mend a load: the values to set, not yet tried.
struct Remedy {
    Stage stage;
    Proposal proposal;
};

/// Of ways that are alike, as of names that may be meant.
inline constexpr std::size_t mostProposals = 5;

/// What was found of each stage of a load. Of several findings about one stage the worst holds, and
/// of those that are alike the first.
class Ladder {
public:
    const Step& at(Stage stage) const { return steps_[static_cast<std::size_t>(stage)]; }
    Step& at(Stage stage) { return steps_[static_cast<std::size_t>(stage)]; }

    void ok(Stage stage, std::string seen);
    void warn(Stage stage, std::string seen, std::string cause, std::string next = "");
    void fail(Stage stage, std::string seen, std::string cause, std::string next = "");

    /// Adds what was found; its texts are shown as they are.
    void add(Stage stage, Step step);

    /// The more promising ones first.
    void propose(Stage stage, Proposal proposal) {
        remedies_.push_back({stage, std::move(proposal)});
    }
    const std::vector<Remedy>& remedies() const { return remedies_; }
    void setRemedies(std::vector<Remedy> remedies) { remedies_ = std::move(remedies); }

    /// The first stage that failed.
    std::optional<Stage> failed() const;

    /// Forgets what is known of the stages behind the first that failed: none was reached.
    void cut();

    /// How many records the source holds for these settings; nothing when that is not known.
    std::optional<std::size_t> records;

    /// What was asked of a server, and what it answered, as far as there was something.
    Exchange exchange;

    /// A user name and a password were refused; they must not be sent again.
    bool credentialsRefused = false;

    /// The query must not be run by the plugin, which would not keep it from writing.
    bool mustNotLoad = false;

    /// The source did not come in time.
    bool isLate = false;

private:
    std::array<Step, stageCount> steps_;
    std::vector<Remedy> remedies_;
};

/// "settings", "address" and so on.
const char* nameOf(Stage stage);

}  // namespace probe
