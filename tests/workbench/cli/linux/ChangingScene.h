#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include "tests/workbench/cli/Workbench.h"

/// A test that changes files while the workbench runs a scene of them.
struct ChangingScene : Workbench {
    /// Puts a file in the place of the one of that name, whole.
    void replace(const std::string& file, const std::string& text) const {
        write(file + ".new", text);
        std::filesystem::rename(folder / (file + ".new"), folder / file);
    }

    /// An instance that loads the array in source.json five times a second.
    static std::string listInstance(const std::string& name, const std::string& more = "") {
        return "{\"name\": \"" + name +
               R"(", "parameters": {"queryMode": "JSON", "filename": "source.json", "xpath": "*",
                  "mode": 3, "table": "T", "autoLoad": true, "autoLoadInterval": 0.2)" +
               more + "}}";
    }

    static std::string sceneWith(const std::string& instances) {
        return "{\"instances\": [" + instances + "]}";
    }

    /// An array of so many texts.
    static std::string arrayOf(int count) {
        std::string text = "[";
        for (int i = 0; i < count; ++i)
            text += (i == 0 ? "\"" : ",\"") + std::to_string(i) + "\"";
        return text + "]";
    }

    /// Runs scene.json for so many seconds, and meanwhile each change after another 0.7 seconds.
    ChildResult runWhile(double seconds, const std::vector<std::function<void()>>& changes,
                         const std::vector<std::string>& more = {}) const {
        std::thread changer([&changes] {
            for (const auto& change : changes) {
                std::this_thread::sleep_for(std::chrono::milliseconds(700));
                change();
            }
        });
        std::vector<std::string> arguments{"run", "scene.json", "--seconds",
                                           std::to_string(seconds)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ChildResult result = run(arguments);
        changer.join();
        return result;
    }

    /// What the events say, each "instance: words"; without what the plugin prints.
    static std::vector<std::string> eventsOf(const std::string& err) {
        std::vector<std::string> events;
        for (std::size_t at = 0; at < err.size(); at = err.find('\n', at) + 1) {
            const std::string line = err.substr(at, err.find('\n', at) - at);
            const auto time = line.find(" s  ");
            if (time != std::string::npos) events.push_back(line.substr(time + 4));
        }
        return events;
    }
};
