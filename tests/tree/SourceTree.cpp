#include "tests/tree/SourceTree.h"

#include <array>
#include <fstream>
#include <regex>

namespace intake {

namespace {

constexpr std::array DIRECTORIES{"bench",  "host",    "pipeline", "platform",
                                 "plugin", "readers", "tests",    "workbench"};

bool isSource(const std::filesystem::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

void findInclude(SourceFile& file, const std::string& line, int number) {
    static const std::regex include(R"(\s*#\s*include\s*(["<])([^">]+)[">].*)");
    std::smatch match;
    if (std::regex_match(line, match, include)) {
        file.includes.push_back({number, match[2], match[1] == "\""});
    }
}

SourceFile readSource(const std::filesystem::path& path) {
    SourceFile file;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) {
        file.lines.push_back(line);
        findInclude(file, line, static_cast<int>(file.lines.size()));
    }
    return file;
}

}  // namespace

SourceTree readSourceTree(const std::filesystem::path& root) {
    SourceTree tree;
    for (const char* const directory : DIRECTORIES) {
        if (!std::filesystem::exists(root / directory)) {
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / directory)) {
            if (entry.is_regular_file() && isSource(entry.path())) {
                const auto path = entry.path().lexically_relative(root).generic_string();
                tree[path] = readSource(entry.path());
            }
        }
    }
    return tree;
}

std::string violation(const std::string& file, int line, const std::string& reason) {
    return file + ":" + std::to_string(line) + ": " + reason;
}

}  // namespace intake
