#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace intake {

/// A new, empty directory that goes with its object.
class TempDirectory {
public:
    TempDirectory() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("intake-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file, with the directories above it, and returns its full path.
    std::string write(const std::string& name, const std::string& content) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file.string();
    }

private:
    std::filesystem::path path_;
};

/// Makes a new, empty directory the current one for as long as it lives.
class TempWorkingDirectory {
public:
    TempWorkingDirectory() { std::filesystem::current_path(directory_.path()); }
    ~TempWorkingDirectory() { std::filesystem::current_path(before_); }
    TempWorkingDirectory(const TempWorkingDirectory&) = delete;
    TempWorkingDirectory& operator=(const TempWorkingDirectory&) = delete;

    const std::filesystem::path& path() const { return directory_.path(); }

    /// See TempDirectory.
    std::string write(const std::string& name, const std::string& content) const {
        return directory_.write(name, content);
    }

private:
    std::filesystem::path before_ = std::filesystem::current_path();
    TempDirectory directory_;
};

}  // namespace intake
