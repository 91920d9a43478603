#include "tests/tree/text_rules.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "tests/tree/directive.h"

namespace intake {

namespace {

const std::set<std::string_view> CONDITIONS{"if", "ifdef", "ifndef", "elif", "elifdef", "elifndef"};

const std::set<std::string_view> SYSTEM_MACROS{
    "WIN32",     "_WIN32",      "WIN64",       "_WIN64",      "_WINDOWS",
    "_MSC_VER",  "__MINGW32__", "__MINGW64__", "__CYGWIN__",  "linux",
    "__linux",   "__linux__",   "unix",        "__unix",      "__unix__",
    "__APPLE__", "__MACH__",    "__ANDROID__", "__FreeBSD__", "_POSIX_VERSION"};

/// Case and character classes; formats/text/ascii.h has those of ours.
const std::set<std::string_view> LOCALE_FUNCTIONS{
    "isalnum", "isalpha", "islower",    "isprint",     "ispunct",  "isspace",   "isupper",
    "tolower", "toupper", "strcasecmp", "strncasecmp", "_stricmp", "_strnicmp", "strcoll"};

/// The first of some words that stands in a line; empty when none does.
std::string_view firstOf(const std::set<std::string_view>& words, std::string_view line) {
    while (!line.empty()) {
        const std::string_view word = leadingIdentifier(line);
        if (words.contains(word)) {
            return word;
        }
        line.remove_prefix(std::max<size_t>(word.size(), 1));
    }
    return {};
}

bool mayAskForTheSystem(const std::string& path) {
    return path.starts_with("platform/") || path == "host/linkage.h";
}

void findSystemConditions(const std::string& path, const SourceFile& file, Violations& found) {
    bool condition = false;
    for (size_t i = 0; i < file.lines.size(); ++i) {
        const std::string& line = file.lines[i];
        condition = condition || CONDITIONS.contains(Directive(line).name);
        const std::string_view macro = condition ? firstOf(SYSTEM_MACROS, line) : "";
        if (!macro.empty()) {
            found.push_back(violation(path, static_cast<int>(i) + 1,
                                      "asks for " + std::string(macro) + " here"));
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

Violations localeFunctions(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        if (path.starts_with("tests/") || path.starts_with("bench/")) {
            continue;
        }
        for (size_t i = 0; i < file.lines.size(); ++i) {
            const std::string_view function = firstOf(LOCALE_FUNCTIONS, file.lines[i]);
            if (!function.empty()) {
                found.push_back(violation(path, static_cast<int>(i) + 1,
                                          "asks the locale by " + std::string(function)));
            }
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
