// button_to_store [PRESSES [IDLE]]: how long it takes from a press of the load button until the
// data store has the values of a small JSON file, at 50 frames a second, while so many other
// instances stand idle. Each press comes at another place between two frames.

#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
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

constexpr int32_t ACTION_LOAD = 0;
constexpr double FRAME_SECONDS = 0.02;
constexpr int FRAMES_BETWEEN_PRESSES = 5;  // until the worker is idle
constexpr double MOST_MILLISECONDS = 15;   // of the median

/// Instances in the stand-in host, the first of which loads `source`.
class Scene {
public:
    Scene(lumo::Host& host, const lumo::Plugin& plugin, const std::string& source, size_t idle)
        : host_(host) {
        host_.store.setObserver(&meter_);
        for (size_t i = 0; i <= idle; ++i) {
            instances_.push_back(std::make_unique<lumo::Instance>(host, plugin, std::to_string(i)));
            instances_.back()->create();
            instances_.back()->load();
        }
        set("queryMode", "JSON");
        set("filename", source);
        set("xpath", "r");
        set("mode", "DataArray");
        set("table", "T");
    }
    ~Scene() { host_.store.setObserver(nullptr); }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void press() { instances_.front()->execAction(ACTION_LOAD); }

    void frame() {
        for (const auto& instance : instances_) {
            instance->execPerField();
        }
    }

    size_t scripts() const { return meter_.scripts(); }

private:
    void set(const char* name, const std::string& value) {
        lumo::Instance& first = *instances_.front();
        first.changed(workbench::setParameter(host_.parameters, first.record(), name, value));
    }

    lumo::Host& host_;
    bench::StoreMeter meter_;
    std::vector<std::unique_ptr<lumo::Instance>> instances_;
};

/// Milliseconds from a press, which comes when that part of a frame has passed, to the store.
double press(Scene& scene, workbench::FrameClock& frames, double part) {
    for (int i = 0; i < FRAMES_BETWEEN_PRESSES; ++i) {
        frames.waitForNextFrame();
        scene.frame();
    }
    std::this_thread::sleep_for(std::chrono::duration<double>(part * FRAME_SECONDS));
    const size_t before = scene.scripts();
    const double start = bench::wallSeconds();
    scene.press();
    while (scene.scripts() == before) {
        frames.waitForNextFrame();
        scene.frame();
    }
    return 1e3 * (bench::wallSeconds() - start);
}

bool measure(int presses, size_t idle) {
    constexpr double GOLDEN_RATIO = 0.6180339887;  // its multiples spread evenly over the frame
    const std::string source =
        std::filesystem::temp_directory_path() / ("button_to_store-" + std::to_string(getpid()));
    std::ofstream(source) << R"({"r": [{"n": 1, "t": "one"}, {"n": 2, "t": "two"}]})";
    bench::Percentiles delays;
    {
        lumo::Host host;
        const lumo::Plugin plugin(PLUGIN);
        Scene scene(host, plugin, source, idle);
        workbench::FrameClock frames;
        for (int i = 0; i < presses; ++i) {
            delays.add(press(scene, frames, std::fmod(i * GOLDEN_RATIO, 1)));
        }
    }
    std::filesystem::remove(source);
    std::printf("%-30s %10s %10s %10s %10s\n", "milliseconds", "50 %", "99 %", "99.9 %", "most");
    delays.print("from the button to the store");
    return delays.at(50) <= MOST_MILLISECONDS;
}

}  // namespace

int main(int argc, char** argv) {
    const int presses = argc > 1 ? std::atoi(argv[1]) : 300;
    const int idle = argc > 2 ? std::atoi(argv[2]) : 0;
    if (argc > 3 || presses <= 0 || idle < 0) {
        std::fprintf(stderr, "usage: button_to_store [PRESSES [IDLE]]\n");
        return 2;
    }
    try {
        return measure(presses, static_cast<size_t>(idle)) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "button_to_store: %s\n", failure.what());
        return 1;
    }
}
