#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/workbench/cli/ChildProcess.h"

/// A test that runs the built workbench in an empty folder of its own.
struct Workbench : testing::Test {
    Workbench() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::path(TEST_FOLDER) /
                 (std::string(test->test_suite_name()) + "." + test->name());
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
    }
    ~Workbench() override {
        std::error_code ignored;  // a process that the system starts may hold a file for a while
        std::filesystem::remove_all(folder, ignored);
    }

    void write(const std::string& file, const std::string& text) const {
        std::ofstream(folder / file, std::ios::binary) << text;
    }

    ChildResult run(const std::vector<std::string>& arguments) const {
        return runChild(WORKBENCH, arguments, folder);
    }

    /// `load` with each of `settings` as a --set, then `more`.
    ChildResult load(const std::vector<std::string>& settings,
                     const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"load"};
        for (const std::string& setting : settings) {
            arguments.push_back("--set");
            arguments.push_back(setting);
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    std::filesystem::path folder;
};
