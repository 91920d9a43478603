#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "workbench/cli/serve/OpenScene.h"
#include "workbench/cli/serve/ServedScene.h"
#include "workbench/cli/serve/StartFolder.h"

namespace workbench {

/// Answers what a page asks of the scene as a file. Server's thread.
class SceneRoutes {
public:
    /// All outlive it.
    SceneRoutes(ServedScene& served, const StartFolder& folder, OpenScene& scene)
        : served_(served), folder_(folder), scene_(scene) {}

    void addTo(Routes& routes);

private:
    static const Route<SceneRoutes> table[5];

    using Revision = std::optional<std::uint64_t>;  // that a page knows, where it says so
    using Snapshot = std::shared_ptr<const SceneSnapshot>;

    /// What has become of the scene, or why it stays as it was.
    struct Outcome {
        Snapshot scene;
        std::optional<serve::WebResponse> refusal;
    };

    /// A save, as a page wishes for it.
    struct Wish {
        std::string name;   // of the file; empty for the scene's own
        std::string stamp;  // of the content that the user has seen there
        bool isHeld = false;
        bool isWithoutSecrets = false;
    };

    static std::optional<Wish> wishIn(const std::string& text);

    void tell(const Call& call);
    void tellFiles(const Call& call);
    void open(const Call& call);
    void save(const Call& call);
    void lock(const Call& call);

    // On the host's thread:
    Snapshot snapshot() const { return std::make_shared<SceneSnapshot>(scene_.snapshot()); }
    void answer(const serve::Reply& reply);
    Outcome take(const StoredScene& scene, const SceneFile& instances, Revision known);
    Outcome beginSave(const Wish& wish, const std::string& named);
    Outcome endSave(const StoredScene& scene, std::optional<serve::WebResponse> refusal);
    std::optional<serve::WebResponse> refusesToSave(const Wish& wish,
                                                    const std::string& file) const;

    // On the thread of a job:
    Outcome asked(std::function<Outcome()> call, const std::stop_token& stop);
    static serve::WebResponse responseOf(const Outcome& outcome);
    serve::WebResponse besides(const std::string& name, const std::stop_token& stop);
    std::string fileToOpen(const std::string& name, const std::stop_token& stop);
    serve::WebResponse opened(const StoredScene& scene, Revision known,
                              const std::stop_token& stop);
    std::string fileToSave(const std::string& name) const;
    serve::WebResponse saved(const Wish& wish, const std::stop_token& stop);

    ServedScene& served_;
    const StartFolder& folder_;
    OpenScene& scene_;  // host's thread
};

}  // namespace workbench
