#pragma once

// Runs an instance frame by frame and finds out what became of each answer.
//
// The plugin tells its host the outcome of a load only through its console variable, so the watch
// switches that on in the record and answers the look-up of the variable with a field of its own.
// When the user did not switch it on, neither the trace nor the store shows anything of this; when
// the user did, everything shows as it would without the watch.
// Owned by a command, for one instance; host's thread only.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/cli/ExitStatus.h"
#include "workbench/cli/written_records.h"
#include "workbench/cobaltlib/StoreObserver.h"
#include "workbench/lumo/Instance.h"

namespace workbench {

/// What became of one answer.
struct Outcome {
    bool failed = false;
    std::string error;         // of a failed load; for people
    bool notExecuted = false;  // the store could not execute the script; the console says why
    std::string scriptFault;   // of a script that was not executed
    std::string actionFault;   // of a post-update action that failed
    bool notStored = false;    // Shared Memory mode, and no memory was bound
    std::string script;        // what was executed or stored; only when the watch keeps it
    std::size_t bytes = 0;     // of that
    std::size_t records = 0;   // that were written; only when the watch counts them
    std::optional<std::vector<std::uint64_t>> marks;  // of the records; the same
    std::vector<WrittenNumber> numbers;               // the same
};

/// How a process ends whose load came to that.
ExitStatus statusOf(const Outcome& outcome);

class LoadWatch final : private cobaltlib::StoreObserver {
public:
    /// Call when the instance's parameters are as the user wants them. Throws UsageError when the
    /// plugin lacks a parameter that the watch needs.
    LoadWatch(lumo::Host& host, lumo::Instance& instance, bool keepsScripts);

    /// From now on, counts the records of each load and marks in the store what this writer wrote.
    void follow(std::uint32_t writer);

    /// Whether the user sees what is written to the console variable: the parameter show_data,
    /// which the watch keeps on.
    void showConsole(bool shown) { userSeesConsole_ = shown; }

    /// Runs the per-field hook once. Returns the outcome when it executed an answer.
    std::optional<Outcome> runFrame();

    /// How many loads the plugin began in the last frame.
    std::int64_t loadsBegun() const { return loadsBegun_; }

    /// That of the last load that wrote into the store.
    std::uint32_t lastMoment() const { return origin_.moment; }

private:
    // Lets the watch judge the console text, and passes it on to the user's own field when there is
    // one. It keeps no text: that of a successful load is its whole script.
    class ConsoleField final : public DataField {
    public:
        explicit ConsoleField(LoadWatch& watch) : watch_(watch) {}
        void setValue(const char* text) override;

        DataField* visible = nullptr;

    private:
        LoadWatch& watch_;
    };

    LookUp lookedUp(std::string_view name, DataField* found) override;
    cobalt::Origin executing() override;
    void executed(std::string_view script, const cobalt::ScriptError* error) override;
    void actionDone(const cobalt::ScriptError* error) override;
    int32_t indexOf(const char* name) const;
    std::string prefixed(const char* name) const;
    void judge(std::string_view consoleText);
    void note(std::string_view written);
    void forgetRecords();
    void finishSharedMemory();
    void finishAction();

    lumo::Host& host_;
    lumo::Instance& instance_;
    const bool keepsScripts_;
    const int32_t queryMode_;
    const int32_t targetMode_;
    const int32_t prefix_;
    const int32_t source_;
    const std::optional<int32_t> action_;
    std::string parsedAction_;  // the text of the action that `actionFault_` is about
    std::string actionFault_;   // of one that cannot be read
    bool countsRecords_ = false;
    cobalt::Origin origin_;
    std::int64_t loadsBegun_ = 0;
    bool userSeesConsole_ = false;
    ConsoleField console_{*this};
    bool answered_ = false;
    Outcome outcome_;
};

}  // namespace workbench
