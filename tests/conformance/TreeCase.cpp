#include "tests/conformance/TreeCase.h"

#include <fstream>

namespace intake {

namespace {

void appendLine(std::string& text, const std::string& line) {
    text += line + "\n";
}

/// Takes the line end from the last line of a section.
void endSection(std::string& text) {
    if (text.ends_with('\n')) {
        text.pop_back();
    }
}

}  // namespace

std::vector<TreeCase> readTreeCases(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<TreeCase> cases;
    std::string section;
    for (std::string line; std::getline(in, line);) {
        if (line == "#data") {
            cases.emplace_back();
            section = line;
        } else if (line.starts_with("#") && section != "#data" && line.find(' ') == line.npos) {
            section = line;
            cases.back().isFragment |= line == "#document-fragment";
            cases.back().needsScript |= line == "#script-on";
        } else if (line == "#errors") {
            section = line;
        } else if (section == "#data") {
            appendLine(cases.back().data, line);
        } else if (section == "#document") {
            appendLine(cases.back().tree, line);
        }
    }
    for (TreeCase& each : cases) {
        endSection(each.data);
        while (each.tree.ends_with("\n\n")) {
            endSection(each.tree);
        }
    }
    return cases;
}

}  // namespace intake
