#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace intake {

struct Include {
    int line;
    std::string path;
    bool quoted;
};

struct SourceFile {
    std::vector<std::string> lines;
    std::vector<Include> includes;
};

/// All C++ files of the tree by their path from its root, with slashes.
using SourceTree = std::map<std::string, SourceFile>;

/// Reads the source directories below `root`; build directories and dependencies are not looked at.
/// Throws std::filesystem::filesystem_error.
SourceTree readSourceTree(const std::filesystem::path& root);

/// What is wrong with a tree, each "file:line: reason".
using Violations = std::vector<std::string>;

std::string violation(const std::string& file, int line, const std::string& reason);

}  // namespace intake
