#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/serve/SceneContent.h"
#include "workbench/cli/serve/SceneText.h"

namespace workbench {

/// A scene as it is shown in a frame, and what its file had in it then. Values only, none of which
/// changes any more: what takes long, parsing and comparing, is done on any thread.
struct SceneSnapshot {
    const lumo::ParameterTable& parameters;  // of the plugin, which never change
    std::string file;                        // where it is; empty for a new scene
    std::string name;                        // as a page knows it
    std::uint64_t revision = 0;
    bool isLocked = false;
    SceneContent opened;  // as it was opened or saved
    SceneContent onDisk;  // as it was seen last
    std::vector<ShownInstance> instances;
    Redaction redact;

    /// What a page is told of it.
    std::string json() const;

    /// The same, with what a save would change in another file of that content.
    std::string jsonBeside(const std::string& other, const SceneContent& content) const;

    /// What a save writes.
    std::string textToSave(bool withoutSecrets) const;

private:
    const char* stateOnDisk() const;
    SceneText textBefore() const;
    std::vector<std::string> lostFrom(const SceneText& other) const;

    /// What is told of a file, beside what is told of the scene.
    struct Compared {
        std::string file;
        const char* onDisk;
        std::string stamp;
        std::vector<SceneChange> changes;
        std::vector<std::string> notes;
    };
    std::string jsonOf(const Compared& compared) const;
};

}  // namespace workbench
