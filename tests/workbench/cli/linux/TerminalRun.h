#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/workbench/cli/TerminalModel.h"

/// The workbench on a terminal: its standard error is one, its standard output a file.
class TerminalRun {
public:
    TerminalRun(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                std::size_t columns, std::size_t rows);
    ~TerminalRun();
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;

    /// Reads what comes until the terminal is as wanted. False when the workbench ends before, or
    /// twenty seconds pass.
    bool watchUntil(const std::function<bool(const TerminalModel&)>& isAsWanted);

    void resize(std::size_t columns, std::size_t rows);
    void interrupt();

    /// Presses Ctrl-Z and waits until the workbench is suspended; lets it go on.
    void suspend();
    void resume();

    /// Waits for the end. Returns the exit status, or -1 when it did not exit by itself.
    int finish();

    const TerminalModel& terminal() const { return terminal_; }
    std::string shown() const { return terminal_.text(); }
    const std::string& written() const { return written_; }

private:
    bool readOnce(int milliseconds);

    TerminalModel terminal_;
    std::string written_;  // all of it
    std::string rest_;     // that does not end with whole characters
    int master_ = -1;
    pid_t child_ = -1;
};
