#include <atomic>
#include <csignal>
#include <cstdio>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/serve/Api.h"
#include "workbench/commands/commands.h"

namespace workbench {

namespace {

std::atomic<bool> interrupted = false;

void onInterrupt(int) {
    interrupted = true;
}

}  // namespace

ExitStatus runServe(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams) {
    LiveScene scene(host, plugin, readSceneFile(options.scene));
    Api api(host, scene, options, serve::listenOnLoopback(options.port));
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, onInterrupt);
    streams.writeResult(api.address() + "\n");
    for (FrameClock clock; !interrupted; clock.waitForNextFrame()) {
        const double now = clock.elapsedSeconds();
        api.runFrame(now, scene.runFrame(now));
    }
    return ExitStatus::Loaded;
}

}  // namespace workbench
