// host_thread [SECONDS [INSTANCES]]: what the plugin takes of the host's thread in each of 50
// frames a second while that many instances load documents of 1 KB to 10 MB, and what it takes to
// place and delete some of them meanwhile. The data store's own work is told apart.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "bench/Percentiles.h"
#include "bench/StoreMeter.h"
#include "bench/process_usage.h"
#include "workbench/cli/FrameClock.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/lumo/Instance.h"

namespace {

using bench::Percentiles;
using bench::ThreadUsage;
using bench::threadUsage;

constexpr double SMALLEST = 1e3;  // bytes
constexpr double LARGEST = 1e7;
constexpr size_t ROWS = 100;              // few, so that the store keeps up
constexpr double BYTES_PER_SECOND = 2e5;  // of one instance
constexpr double SHORTEST_INTERVAL = 0.5;

constexpr double MOST_IN_ALMOST_ALL = 1;  // milliseconds, in 99.9 % of all frames
constexpr double MOST = 5;

struct Format {
    const char* queryMode;
    const char* path;
    const char* start;
    const char* beforeText;
    const char* afterText;
    const char* end;
};

constexpr Format FORMATS[] = {
    {"JSON", "r", R"({"r": [)", R"({"n": 1, "t": ")", "\"},\n", "{}]}"},
    {"XML", "//r", "<d>", "<r><n>1</n><t>", "</t></r>\n", "</d>"},
    {"4", "", "<table><tr><th>n</th><th>t</th></tr>", "<tr><td>1</td><td>", "</td></tr>\n",
     "</table>"},
};

const Format& formatOf(size_t instance) {
    return FORMATS[instance % std::size(FORMATS)];
}

/// From the smallest to the largest, each the same part larger than the one before.
double bytesOf(size_t instance, size_t count) {
    const double part = static_cast<double>(instance) / static_cast<double>(count);
    return SMALLEST * std::pow(LARGEST / SMALLEST, part);
}

std::string writeSource(size_t instance, double bytes) {
    const Format& format = formatOf(instance);
    std::string content = format.start;
    const auto text = static_cast<size_t>(bytes) / ROWS;
    for (size_t row = 0; row < ROWS; ++row) {
        content.append(format.beforeText).append(text, 'x').append(format.afterText);
    }
    const std::string name = "source" + std::to_string(instance);
    std::ofstream(name, std::ios::binary) << content.append(format.end);
    return name;
}

class Benchmark {
public:
    Benchmark(lumo::Host& host, const lumo::Plugin& plugin, size_t count)
        : host_(host), plugin_(plugin), instances_(count) {
        host_.store.setObserver(&meter_);
        for (size_t i = 0; i < count; ++i) {
            writeSource(i, bytesOf(i, count));
            place(i);
        }
    }
    ~Benchmark() { host_.store.setObserver(nullptr); }
    Benchmark(const Benchmark&) = delete;
    Benchmark& operator=(const Benchmark&) = delete;

    void run(double seconds) {
        workbench::FrameClock frames;
        while (frames.elapsedSeconds() < seconds) {
            perFieldHooks();
            ++frames_;
            if (frames_ % FRAMES_PER_REPLACEMENT == 0) {
                replace(frames_ / FRAMES_PER_REPLACEMENT * PRIME % instances_.size());
            }
            frames.waitForNextFrame();
        }
    }

    /// Deletes instances whose worker was ended, and whose ten large answers nobody took.
    void deleteLate() {
        for (int round = 0; round < LATE_DELETIONS; ++round) {
            auto& largest = instances_.back();
            for (int load = 0; load < RING; ++load) {
                largest->execAction(ACTION_LOAD);
            }
            std::this_thread::sleep_for(TIME_FOR_TEN_LOADS);
            largest->execAction(ACTION_TERMINATE);
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            lateDeletion_.add(timeOf([&] { largest = nullptr; }));
            place(instances_.size() - 1);
        }
    }

    bool report() {
        std::printf("%zu frames; %zu scripts, %.0f MB; peak %.0f MB\n", frames_, meter_.scripts(),
                    static_cast<double>(meter_.bytes()) / 1e6, bench::peakBytes() / 1e6);
        std::printf("%-30s %10s %10s %10s %10s\n", "processor time, ms", "50 %", "99 %", "99.9 %",
                    "most");
        hooks_.print("all hooks of a frame");
        store_.print("the store in a frame");
        placing_.print("placing an instance");
        deletion_.print("deleting one that loads");
        lateDeletion_.print("deleting one with ten answers");
        waits_.print("waits in the hooks, a count");
        return hooks_.at(99.9) <= MOST_IN_ALMOST_ALL && hooks_.at(100) <= MOST &&
               placing_.at(100) <= MOST && deletion_.at(100) <= MOST &&
               lateDeletion_.at(100) <= MOST;
    }

private:
    static constexpr int32_t ACTION_LOAD = 0;
    static constexpr int32_t ACTION_TERMINATE = 2;
    static constexpr int RING = 10;  // answers that an instance keeps
    static constexpr int LATE_DELETIONS = 3;
    static constexpr std::chrono::seconds TIME_FOR_TEN_LOADS{8};
    static constexpr size_t FRAMES_PER_REPLACEMENT = 10;
    static constexpr size_t PRIME = 73;

    void place(size_t i) {
        auto& instance = instances_[i];
        const double bytes = bytesOf(i, instances_.size());
        instance = std::make_unique<lumo::Instance>(host_, plugin_, std::to_string(i));
        instance->create();
        instance->load();
        set(*instance, "queryMode", formatOf(i).queryMode);
        set(*instance, "filename", "source" + std::to_string(i));
        set(*instance, "xpath", formatOf(i).path);
        set(*instance, "fromRow", i % std::size(FORMATS) == 2 ? "1" : "");
        set(*instance, "mode", "DataArray");
        set(*instance, "table", "T" + std::to_string(i));
        set(*instance, "autoLoadInterval",
            std::to_string(std::max(SHORTEST_INTERVAL, bytes / BYTES_PER_SECOND)));
        set(*instance, "autoLoad", "1");
    }

    void set(lumo::Instance& instance, const char* name, const std::string& value) {
        instance.changed(workbench::setParameter(host_.parameters, instance.record(), name, value));
    }

    template <class Action>
    static double timeOf(Action action) {
        const ThreadUsage start = threadUsage();
        action();
        return (threadUsage() - start).milliseconds;
    }

    void perFieldHooks() {
        const ThreadUsage start = threadUsage();
        for (const auto& instance : instances_) {
            instance->execPerField();
        }
        const ThreadUsage all = threadUsage() - start;
        const ThreadUsage store = meter_.takeSpent();
        hooks_.add((all - store).milliseconds);
        waits_.add((all - store).waits);
        store_.add(store.milliseconds);
    }

    /// An instance goes, whatever it is at, and another one comes.
    void replace(size_t i) {
        deletion_.add(timeOf([&] { instances_[i] = nullptr; }));
        placing_.add(timeOf([&] { place(i); }));
    }

    lumo::Host& host_;
    const lumo::Plugin& plugin_;
    bench::StoreMeter meter_;
    std::vector<std::unique_ptr<lumo::Instance>> instances_;
    size_t frames_ = 0;
    Percentiles hooks_, store_, placing_, deletion_, lateDeletion_, waits_;
};

/// A folder for the sources, which is the current one as long as it lives.
class WorkFolder {
public:
    WorkFolder() {
        std::filesystem::create_directory(path_);
        std::filesystem::current_path(path_);
    }
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::current_path(path_.parent_path(), ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("host_thread-" + std::to_string(getpid()));
};

bool run(double seconds, size_t instances) {
    const WorkFolder folder;
    lumo::Host host;
    const lumo::Plugin plugin(PLUGIN);
    Benchmark benchmark(host, plugin, instances);
    benchmark.run(seconds);
    benchmark.deleteLate();
    return benchmark.report();
}

}  // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::atof(argv[1]) : 60;
    const int instances = argc > 2 ? std::atoi(argv[2]) : 200;
    if (argc > 3 || seconds <= 0 || instances <= 0) {
        std::fprintf(stderr, "usage: host_thread [SECONDS [INSTANCES]]\n");
        return 2;
    }
    try {
        return run(seconds, static_cast<size_t>(instances)) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "host_thread: %s\n", failure.what());
        return 1;
    }
}
