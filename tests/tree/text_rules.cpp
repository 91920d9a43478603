#include "tests/tree/text_rules.h"

#include <algorithm>
#include <regex>

namespace intake {

namespace {

const std::regex CONDITION(R"(\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b.*)");

const std::regex SYSTEM_MACRO(
    R"(\b(_?WIN32|_?WIN64|_WINDOWS|_MSC_VER|__MINGW32__|__MINGW64__|__CYGWIN__|)"
    R"(__linux__|__linux|linux|__unix__|__unix|unix|__APPLE__|__MACH__|__ANDROID__|)"
    R"(__FreeBSD__|_POSIX_VERSION)\b)");

bool mayAskForTheSystem(const std::string& path) {
    return path.starts_with("platform/") || path == "host/linkage.h";
}

void findSystemConditions(const std::string& path, const SourceFile& file, Violations& found) {
    bool condition = false;
    for (size_t i = 0; i < file.lines.size(); ++i) {
        const std::string& line = file.lines[i];
        condition = condition || std::regex_match(line, CONDITION);
        std::smatch macro;
        if (condition && std::regex_search(line, macro, SYSTEM_MACRO)) {
            found.push_back(
                violation(path, static_cast<int>(i) + 1, "asks for " + macro.str() + " here"));
        }
        condition = condition && line.ends_with('\\');
    }
}

}  // namespace

Violations systemConditions(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        if (!mayAskForTheSystem(path)) {
            findSystemConditions(path, file, found);
        }
    }
    return found;
}

Violations unguardedHeaders(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        if (path.ends_with(".h") &&
            std::find(file.lines.begin(), file.lines.end(), "#pragma once") == file.lines.end()) {
            found.push_back(violation(path, 1, "has no #pragma once"));
        }
    }
    return found;
}

}  // namespace intake
