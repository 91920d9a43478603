#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/serve/SceneOnDisk.h"
#include "workbench/cli/serve/SceneText.h"
#include "workbench/cli/serve/StartFolder.h"

namespace workbench {

/// The scene that a page works on: the file that it comes from, what has been changed since, and
/// whether it is locked. Host's thread.
class OpenScene {
public:
    /// `file` is empty for a new scene. All outlive it.
    OpenScene(const lumo::Host& host, LiveScene& live, const StartFolder& folder,
              const std::string& file, const std::string& text);

    /// As a page knows it; empty for a new scene.
    std::string name() const { return folder_.nameOf(file_); }

    /// Empty for a new scene.
    const std::string& file() const { return file_; }

    /// Names the content that the file had when it was looked at last.
    const std::string& stamp() const { return disk_.stamp(); }

    bool isLocked() const { return isLocked_; }
    void lock(bool isLocked);

    /// Rises with every change of what json() tells.
    std::uint64_t revision() const { return revision_; }
    void touch() { ++revision_; }

    /// What a page is told of it.
    std::string json() const;

    /// The same, with what a save would change in another file that has this content, if any.
    std::string jsonBeside(const std::string& name, const std::optional<std::string>& text) const;

    /// What a save writes.
    std::string textToSave(bool withoutSecrets) const;
    void saved(const std::string& file, const std::string& text);

    /// While a save is written, nothing may change what it will be taken for: neither the file nor
    /// the names of the instances.
    bool isBeingSaved() const { return isBeingSaved_; }
    void setBeingSaved(bool isBeingSaved) { isBeingSaved_ = isBeingSaved; }

    /// Takes up another scene, or this one as it is on disk. Throws UsageError, and changes
    /// nothing.
    void open(const std::string& file, const std::string& text);

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
    const char* onDisk() const;
    SceneText textBefore() const;
    std::vector<ShownInstance> shown() const;
    std::string jsonOf(const std::string& name, const char* onDisk, const std::string& stamp,
                       const std::vector<SceneChange>& changes,
                       const std::vector<std::string>& notes) const;
    std::vector<std::string> notes() const;
    std::vector<std::string> lostFrom(const SceneText& other) const;

    const lumo::Host& host_;
    LiveScene& live_;
    const StartFolder& folder_;
    std::string file_;
    std::string text_;  // as it was opened or saved
    SceneOnDisk disk_;
    bool isLocked_ = false;
    bool isBeingSaved_ = false;
    std::uint64_t revision_ = 1;
    std::map<std::uint32_t, Origin> origins_;  // by writer
};

}  // namespace workbench
