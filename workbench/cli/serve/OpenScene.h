#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/serve/SceneOnDisk.h"
#include "workbench/cli/serve/SceneSnapshot.h"

namespace workbench {

/// A scene's file, and what it has in it. Made by jobs, since both ask the disk.
struct StoredScene {
    std::string file;  // empty for a new scene
    std::string name;  // as a page knows it
    SceneContent content;
};

/// The scene that a page works on: the file that it comes from, what has been changed since, and
/// whether it is locked. Host's thread.
class OpenScene {
public:
    /// `host` and `live` outlive it; `worker` looks at the file.
    OpenScene(const lumo::Host& host, LiveScene& live, const StoredScene& scene,
              SceneOnDisk::Worker worker);

    /// As a page knows it; empty for a new scene.
    const std::string& name() const { return name_; }

    /// Empty for a new scene.
    const std::string& file() const { return file_; }

    /// Names the content that the file had when it was looked at last.
    const std::string& stamp() const { return disk_.content().stamp; }

    bool isLocked() const { return isLocked_; }
    void lock(bool isLocked);

    /// Rises with every change of what a page is told of it.
    std::uint64_t revision() const { return revision_; }
    void touch() { ++revision_; }

    /// As it is now, for jobs to compare.
    SceneSnapshot snapshot() const;

    /// It has become what that file has in it.
    void saved(const StoredScene& scene);

    /// While a save is written, nothing may change what it will be taken for: neither the file nor
    /// the names of the instances.
    bool isBeingSaved() const { return isBeingSaved_; }
    void setBeingSaved(bool isBeingSaved) { isBeingSaved_ = isBeingSaved; }

    /// Takes up another scene, or this one as it is on disk; `instances` are what the plugin knows
    /// of its content. Throws UsageError, and changes nothing.
    void open(const StoredScene& scene, const SceneFile& instances);

    /// An instance that was made as a copy of another.
    void added(const LiveInstance& instance, const LiveInstance& like);

    /// Looks whether the file has changed.
    void runFrame(double now);

private:
    struct Origin {
        std::string stored;  // its name in the file; empty where it has none
        std::string like;    // the one there whose unknown members it has
    };

    void noteStored();

    const lumo::Host& host_;
    LiveScene& live_;
    std::string file_;
    std::string name_;
    SceneContent opened_;  // or saved
    SceneOnDisk disk_;
    bool isLocked_ = false;
    bool isBeingSaved_ = false;
    std::uint64_t revision_ = 1;
    std::map<std::uint32_t, Origin> origins_;  // by writer
};

}  // namespace workbench
