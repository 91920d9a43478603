#include <atomic>
#include <csignal>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/run/LiveScene.h"
#include "workbench/cli/run/ReportFile.h"
#include "workbench/cli/run/RunView.h"
#include "workbench/cli/run/SceneWatch.h"
#include "workbench/cli/run/WhyFinder.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/store_table.h"
#include "workbench/commands/commands.h"

namespace workbench {

namespace {

std::atomic<bool> interrupted = false;

void onInterrupt(int) {
    interrupted = true;
}

bool isOver(const Options& options, int64_t frame, const FrameClock& clock) {
    if (interrupted) return true;
    if (options.frames) return frame >= *options.frames;
    return options.seconds && clock.elapsedSeconds() >= *options.seconds;
}

std::string adviceOn(const LoadEvent& event, const lumo::Host& host, LiveScene& scene,
                     const std::string& file) {
    if (event.report.outcome != LoadOutcome::Failed) return "";
    const lumo::Record& record = scene.instances()[event.instance]->record();
    return adviceOnMissingSource(host.parameters, record, file);
}

/// Runs until the end; `whys` may be null.
void runFrames(const lumo::Host& host, LiveScene& scene, const Options& options,
               ReportFile& reports, WhyFinder* whys, RunView& view) {
    SceneWatch sceneWatch(options.scene);
    FrameClock clock;
    for (int64_t frame = 0; !isOver(options, frame, clock); ++frame) {
        const double now = clock.elapsedSeconds();
        for (const LoadEvent& event : scene.runFrame(now)) {
            reports.write(event.report);
            view.tell(event, adviceOn(event, host, scene, options.scene), now);
        }
        if (options.watchesScene) sceneWatch.runFrame(scene, view, now);
        if (whys != nullptr) whys->runFrame(scene, view, now);
        view.frame(scene, now);
        clock.waitForNextFrame();
    }
    view.finish(scene, clock.elapsedSeconds());
}

std::string finalTables(const lumo::Host& host, const LiveScene& scene, const PageSize& page) {
    std::string tables = storeTables(host.store.core(), host.memories, page);
    const Table leftOver = scene.leftOverTable();
    return leftOver.rows.empty() ? tables : tables + '\n' + leftOver.print(page);
}

}  // namespace

ExitStatus runScene(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams) {
    const SceneFile file = readSceneFile(options.scene);
    ReportFile reports(options.report, streams);
    const auto whys = options.explains ? makeWhyFinder(host, options) : nullptr;
    LiveScene scene(host, plugin, file);
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, onInterrupt);
    runFrames(host, scene, options, reports, whys.get(), *makeRunView(streams, options));
    const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
    streams.writeResult(finalTables(host, scene, page));
    return scene.status();
}

}  // namespace workbench
