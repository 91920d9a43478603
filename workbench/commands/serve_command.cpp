#include <atomic>
#include <csignal>
#include <cstdio>
#include <system_error>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/serve/Api.h"
#include "workbench/commands/commands.h"
#include "workbench/serve/OpenedAddress.h"

namespace workbench {

namespace {

std::atomic<bool> interrupted = false;

void onInterrupt(int) {
    interrupted = true;
}

SceneFile sceneOf(const Options& options) {
    if (options.scene.empty()) return {"", {{"workbench", {}}}};
    return readSceneFile(options.scene);
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

}  // namespace

ExitStatus runServe(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams) {
    LiveScene scene(host, plugin, sceneOf(options));
    Api api(host, scene, options, serve::listenOnLoopback(options.port));
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, onInterrupt);
    streams.writeResult(api.address() + "\n");
    const auto opened = options.opensPage ? openInBrowser(api.address()) : nullptr;
    for (FrameClock clock; !interrupted; clock.waitForNextFrame()) {
        const double now = clock.elapsedSeconds();
        api.runFrame(now, scene.runFrame(now));
    }
    return ExitStatus::Loaded;
}

}  // namespace workbench
