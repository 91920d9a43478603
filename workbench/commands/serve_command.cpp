#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/serve/Api.h"
#include "workbench/cli/serve/SceneText.h"
#include "workbench/commands/commands.h"
#include "workbench/serve/OpenedAddress.h"

namespace workbench {

namespace {

std::atomic<bool> interrupted = false;

void onInterrupt(int) {
    interrupted = true;
}

/// What the plugin knows of the scene; of the rest it is told that it is kept.
SceneFile sceneOf(const Options& options, const std::string& text,
                  const lumo::ParameterTable& parameters) {
    if (options.scene.empty()) return {"", {{"workbench", {}}}};
    const SceneText scene(options.scene, text, parameters);
    for (const std::string& note : scene.notes())
        std::fprintf(stderr, "%s: %s\n", options.scene.c_str(), printable(note).c_str());
    return scene.known();
}

/// Null where there is no browser to be had, which is told.
std::unique_ptr<serve::OpenedAddress> openInBrowser(const std::string& address) {
    try {
        return std::make_unique<serve::OpenedAddress>(address);
    } catch (const std::system_error& error) {
        std::fprintf(stderr, "The page could not be opened in a browser: %s.\n", error.what());
        return nullptr;
    }
}

void runFrames(LiveScene& scene, Api& api, bool opensPage) {
    const auto opened = opensPage ? openInBrowser(api.address()) : nullptr;
    for (FrameClock clock; !interrupted; clock.waitForNextFrame()) {
        const double now = clock.elapsedSeconds();
        api.runFrame(now, scene.runFrame(now));
    }
}

/// A thread that waits for a disk cannot be ended, and uses what would go with this one.
[[noreturn]] void leaveWithout() {
    std::fputs("A disk does not answer; the workbench ends without waiting for it.\n", stderr);
    std::_Exit(static_cast<int>(ExitStatus::Loaded));
}

}  // namespace

ExitStatus runServe(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams) {
    const std::string text = options.scene.empty() ? "" : readSceneText(options.scene);
    LiveScene scene(host, plugin, sceneOf(options, text, host.parameters));
    Api api(host, scene, text, options, serve::listenOnLoopback(options.port));
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, onInterrupt);
    streams.writeResult(api.address() + "\n");
    runFrames(scene, api, options.opensPage);
    if (!api.end()) leaveWithout();
    return ExitStatus::Loaded;
}

}  // namespace workbench
