#pragma once

namespace workbench {

/// Tells a user at a terminal, once and in a line of its own, that a load is taking its time. A
/// line that kept changing would run into what the plugin prints meanwhile. Silent when standard
/// error is no terminal.
class PatienceNotice {
public:
    PatienceNotice(bool onTerminal, double timeoutSeconds)
        : due_(onTerminal), timeoutSeconds_(timeoutSeconds) {}

    /// Call now and then while waiting.
    void show(double elapsedSeconds);

private:
    bool due_;
    const double timeoutSeconds_;
};

}  // namespace workbench
