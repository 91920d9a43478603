// usage: html_conformance [--failures] FOLDER
// Parses the page of every case in the .dat files of a folder (html5lib's tree-construction) and
// prints how many become the tree that they should. Cases of fragments and of running scripts do
// not apply: Intake reads whole pages and runs nothing.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "formats/html/Page.h"
#include "formats/html/PageError.h"
#include "tests/conformance/TreeCase.h"
#include "tests/conformance/tree_dump.h"

namespace {

struct Score {
    int right = 0;
    int wrong = 0;
    int notApplicable = 0;
};

std::string treeOf(const std::string& data) {
    const intake::EndMark endMark;
    try {
        return dumpTree(*intake::html::parsePage(data, endMark));
    } catch (const std::exception& error) {
        return error.what() + std::string("\n");
    }
}

void judge(const intake::TreeCase& treeCase, bool showFailures, Score& score) {
    if (treeCase.isFragment || treeCase.needsScript) {
        ++score.notApplicable;
        return;
    }
    const std::string tree = treeOf(treeCase.data);
    const bool isRight = tree == treeCase.tree;
    ++(isRight ? score.right : score.wrong);
    if (!isRight && showFailures) {
        std::printf("--- page\n%s\n--- expected\n%s--- became\n%s\n", treeCase.data.c_str(),
                    treeCase.tree.c_str(), tree.c_str());
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bool showFailures = argc == 3 && std::strcmp(argv[1], "--failures") == 0;
    if (argc != (showFailures ? 3 : 2)) {
        std::fprintf(stderr, "usage: html_conformance [--failures] FOLDER\n");
        return 2;
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(argv[argc - 1])) {
        if (entry.path().extension() == ".dat") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    Score total;
    for (const auto& file : files) {
        Score score;
        for (const intake::TreeCase& each : intake::readTreeCases(file)) {
            judge(each, showFailures, score);
        }
        std::printf("%-45s %4d of %4d\n", file.filename().string().c_str(), score.right,
                    score.right + score.wrong);
        total.right += score.right;
        total.wrong += score.wrong;
        total.notApplicable += score.notApplicable;
    }
    const int applicable = total.right + total.wrong;
    std::printf("%d of %d cases right, %.2f %%; %d do not apply\n", total.right, applicable,
                applicable == 0 ? 0 : 100.0 * total.right / applicable, total.notApplicable);
    return 0;
}
