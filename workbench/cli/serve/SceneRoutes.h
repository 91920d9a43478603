#pragma once

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

    /// What is to be written where.
    struct Save {
        std::string file;
        bool isOwn = false;  // the file that the scene is from
        std::string stamp;   // of the content that the user has seen there
        std::string text;
        bool isPrivate = false;  // it holds secrets
    };

    void tell(const Call& call);
    void tellFiles(const Call& call);
    void open(const Call& call);
    void save(const Call& call);
    void lock(const Call& call);

    // On the host's thread:
    serve::WebResponse opened(const std::string& file, const std::string& text);
    std::string fileToSave(const std::string& name) const;
    std::optional<serve::WebResponse> refusesToSave(const std::string& body,
                                                    const std::string& file) const;
    Save saveFor(const std::string& body, const std::string& file) const;
    void save(const Call& call, const Save& save);

    // On the thread of a job:
    serve::WebResponse besides(const std::string& name, const std::stop_token& stop);
    std::string fileToOpen(const std::string& name, const std::stop_token& stop);
    serve::WebResponse write(const Save& save, const std::stop_token& stop);

    ServedScene& served_;
    const StartFolder& folder_;
    OpenScene& scene_;  // host's thread
};

}  // namespace workbench
