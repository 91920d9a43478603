#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace intake {

/// One case of a tree-construction file: a page, and the tree that it is to become.
struct TreeCase {
    std::string data;
    std::string tree;         // one line for each node
    bool isFragment = false;  // parsed as the content of an element; pages are not
    bool needsScript = false;
};

/// The cases of a .dat file of html5lib's tree-construction tests.
std::vector<TreeCase> readTreeCases(const std::filesystem::path& file);

}  // namespace intake
