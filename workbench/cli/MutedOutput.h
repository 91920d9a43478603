#pragma once

namespace workbench {

/// While it lives, what is printed to standard output and standard error, the plugin's messages
/// above all, goes nowhere. Main thread; throws std::system_error.
class MutedOutput {
public:
    MutedOutput();
    ~MutedOutput();
    MutedOutput(const MutedOutput&) = delete;
    MutedOutput& operator=(const MutedOutput&) = delete;

private:
    int output_;
    int error_;
};

}  // namespace workbench
