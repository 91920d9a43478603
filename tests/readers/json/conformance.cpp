// Parses every file of a directory of conformance cases, whose names say what has to become of
// them: y_ is accepted, n_ is refused, i_ may be either. Names each file that fares otherwise and
// exits with 1 if there is any: json_conformance DIRECTORY.

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <vector>

#include "tests/formats/json/parse.h"
#include "tests/readers/json/golden_cases.h"

namespace {

/// One kind of cases and how they fared.
struct Kind {
    char mark;
    const char* title;
    int accepted = 0;
    int refused = 0;
    int wrong = 0;
};

void check(const std::filesystem::path& file, Kind& kind) {
    const std::string outcome = intake::parseError(intake::contentOf(file));
    const bool accepted = outcome == "accepted";
    ++(accepted ? kind.accepted : kind.refused);
    if (kind.mark == (accepted ? 'n' : 'y')) {
        ++kind.wrong;
        std::cout << file.filename().string() << ": " << outcome << '\n';
    }
}

std::vector<std::filesystem::path> filesOf(const char* directory) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2 || !std::filesystem::is_directory(arguments[1])) {
        std::cerr << "usage: json_conformance DIRECTORY\n";
        return 2;
    }
    std::array<Kind, 3> kinds{{{'y', "to accept"}, {'n', "to refuse"}, {'i', "free"}}};
    for (const auto& file : filesOf(arguments[1])) {
        const char mark = file.filename().string()[0];
        const auto kind = std::ranges::find(kinds, mark, &Kind::mark);
        if (kind != kinds.end()) {
            check(file, *kind);
        }
    }
    int files = 0;
    int wrong = 0;
    for (const Kind& kind : kinds) {
        std::cout << kind.title << ": " << kind.accepted << " accepted, " << kind.refused
                  << " refused, " << kind.wrong << " wrong\n";
        files += kind.accepted + kind.refused;
        wrong += kind.wrong;
    }
    if (files == 0) {
        std::cerr << "There are no cases in " << arguments[1] << ".\n";
        return 2;
    }
    return wrong == 0 ? 0 : 1;
}
