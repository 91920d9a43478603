#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <deque>
#include <optional>
#include <vector>

#include "workbench/cli/FrameClock.h"
#include "workbench/cli/LoadWatch.h"
#include "workbench/cli/commands.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/missing_file.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/scene_file.h"
#include "workbench/cli/store_table.h"

namespace workbench {

namespace {

std::atomic<bool> interrupted = false;

void onInterrupt(int) {
    interrupted = true;
}

void restoreInstances(lumo::Host& host, const lumo::Plugin& plugin, const SceneFile& scene,
                      std::deque<lumo::Instance>& instances) {
    for (const StoredInstance& stored : scene.instances) {
        lumo::Instance& instance = instances.emplace_back(host, plugin, stored.name);
        scene.restore(stored, host.parameters, instance.record());
    }
    for (lumo::Instance& instance : instances)
        instance.load();
    for (lumo::Instance& instance : instances)
        instance.afterLoad();
}

void report(const lumo::Instance& instance, const Outcome& outcome, const std::string& advice,
            double seconds, bool onTerminal) {
    const char* name = instance.name().c_str();
    if (!advice.empty()) std::fprintf(stderr, "%8.2f s  %s: %s\n", seconds, name, advice.c_str());
    if (outcome.failed) {
        std::fprintf(stderr, "%8.2f s  %s: %s\n", seconds, name, outcome.error.c_str());
    } else if (outcome.notStored) {
        std::fprintf(stderr, "%8.2f s  %s: no shared memory is bound\n", seconds, name);
    } else if (outcome.notExecuted) {
        std::fprintf(stderr, "%8.2f s  %s: the data store could not execute the script\n", seconds,
                     name);
    } else if (onTerminal) {
        std::fprintf(stderr, "%8.2f s  %s: loaded\n", seconds, name);
    }
}

bool isOver(const Options& options, int64_t frame, const FrameClock& clock) {
    if (interrupted) return true;
    if (options.frames) return frame >= *options.frames;
    return options.seconds && clock.elapsedSeconds() >= *options.seconds;
}

/// That of its last load. An instance that loads automatically should have had one.
ExitStatus statusOf(const lumo::Host& host, const lumo::Instance& instance,
                    std::optional<ExitStatus> lastLoad) {
    if (lastLoad) return *lastLoad;
    const auto autoLoad = host.parameters.find("autoLoad");
    if (!autoLoad || instance.record().integer(*autoLoad) == 0) return ExitStatus::Loaded;
    std::fprintf(stderr, "%s: no answer yet\n", instance.name().c_str());
    return ExitStatus::NoAnswer;
}

/// That of the first instance that did not end well.
ExitStatus overallStatus(const std::vector<ExitStatus>& statuses) {
    const auto isBad = [](ExitStatus status) { return status != ExitStatus::Loaded; };
    const auto bad = std::find_if(statuses.begin(), statuses.end(), isBad);
    return bad == statuses.end() ? ExitStatus::Loaded : *bad;
}

}  // namespace

ExitStatus runScene(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                    const StandardStreams& streams) {
    const SceneFile scene = readSceneFile(options.scene);
    std::deque<lumo::Instance> instances;
    restoreInstances(host, plugin, scene, instances);
    std::deque<LoadWatch> watches;
    for (lumo::Instance& instance : instances)
        watches.emplace_back(host, instance, false);
    std::vector<std::optional<ExitStatus>> lastLoads(instances.size());

    std::signal(SIGINT, onInterrupt);
    FrameClock clock;
    for (int64_t frame = 0; !isOver(options, frame, clock); ++frame) {
        for (std::size_t i = 0; i < instances.size(); ++i) {
            const auto outcome = watches[i].runFrame();
            if (!outcome) continue;
            const std::string advice =
                outcome->failed
                    ? adviceOnMissingSource(host.parameters, instances[i].record(), options.scene)
                    : "";
            report(instances[i], *outcome, advice, clock.elapsedSeconds(),
                   streams.errorIsTerminal());
            lastLoads[i] = statusOf(*outcome);
        }
        clock.waitForNextFrame();
    }
    streams.writeResult(storeTables(host.store.core(), host.memories,
                                    pageSize(streams.resultColumns(), columnsFromEnvironment())));
    std::vector<ExitStatus> statuses;
    for (std::size_t i = 0; i < instances.size(); ++i)
        statuses.push_back(statusOf(host, instances[i], lastLoads[i]));
    return overallStatus(statuses);
}

}  // namespace workbench
