#pragma once

#include <string>

namespace workbench {

/// A line on the terminal that tells what is going on while the user waits. Silent when standard
/// error is no terminal.
class Progress {
public:
    Progress(bool onTerminal, std::string what) : onTerminal_(onTerminal), what_(std::move(what)) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(double elapsedSeconds);
    void clear();

private:
    bool onTerminal_;
    std::string what_;
    std::string shown_;
};

}  // namespace workbench
