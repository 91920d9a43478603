#pragma once

#include <string_view>

namespace workbench {

/// While it lives, what is printed to standard output and standard error, the plugin's messages
/// above all, goes nowhere. Main thread; throws std::system_error.
class MutedOutput {
public:
    MutedOutput();
    ~MutedOutput();
    MutedOutput(const MutedOutput&) = delete;
    MutedOutput& operator=(const MutedOutput&) = delete;

    /// Writes to the standard error that was.
    void tell(std::string_view text) const;

    /// Leaves it so until the process ends.
    void stay() { stays_ = true; }

private:
    bool stays_ = false;
    int output_;
    int error_;
};

}  // namespace workbench
