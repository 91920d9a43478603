#pragma once

#include <string>
#include <vector>

namespace workbench {

/// Some lines at the end of what a terminal shows, which are kept current in place: what to write
/// so that they appear. The cursor stands at the begin of the line below them. Plain texts; any
/// thread.
class ScreenBlock {
public:
    /// Changes the lines that differ; `above`, whole lines, appears above them all and scrolls away
    /// as usual. Empty when there is nothing to change.
    std::string update(const std::vector<std::string>& lines, const std::string& above);

    /// Leaves the lines where they are; the next ones appear below.
    void leave() { shown_.clear(); }

    /// Clears the terminal, whose size has changed: nobody knows where the lines are then.
    std::string clear();

private:
    std::string rewriteAll(const std::vector<std::string>& lines, const std::string& above) const;

    std::vector<std::string> shown_;
};

}  // namespace workbench
