#include "tests/tree/SourceTree.h"

#include <array>
#include <fstream>
#include <string_view>

#include "tests/tree/directive.h"

namespace intake {

namespace {

constexpr std::array DIRECTORIES{"bench",  "formats", "host",  "pipeline", "platform",
                                 "plugin", "readers", "tests", "workbench"};

bool isSource(const std::filesystem::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

void findInclude(SourceFile& file, std::string_view line, int number) {
    const Directive directive(line);
    if (directive.name != "include" || directive.rest.empty()) {
        return;
    }
    const bool quoted = directive.rest.front() == '"';
    const std::string_view path = directive.rest.substr(1);
    file.includes.push_back(
        {number, std::string(path.substr(0, path.find(quoted ? '"' : '>'))), quoted});
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
