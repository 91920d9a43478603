#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "workbench/cli/run/RunView.h"

namespace workbench {

/// Looks once a second whether the file of a scene has changed, and lets the scene take it up. One
/// that cannot be read is told, and the scene goes on as it was. Main thread.
class SceneWatch {
public:
    explicit SceneWatch(std::string file);

    void runFrame(LiveScene& scene, RunView& view, double now);

private:
    /// What changes when a file does.
    struct Stamp {
        std::int64_t time = 0;
        std::uintmax_t size = 0;
        std::uint64_t file = 0;

        bool operator==(const Stamp&) const = default;
    };
    std::optional<Stamp> stamp() const;

    const std::string file_;
    std::optional<Stamp> known_;
    double lookedAt_ = 0;
};

/// A number that two files on a disk do not share at a time; 0 when it is not known.
std::uint64_t fileIdentity(const std::string& file);

}  // namespace workbench
