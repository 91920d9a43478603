#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "tests/tree/SourceTree.h"
#include "tests/tree/include_rules.h"
#include "tests/tree/text_rules.h"

namespace intake {

namespace {

class ThisSourceTree : public testing::Test {
protected:
    static const SourceTree& tree() {
        static const SourceTree tree = readSourceTree(SOURCE_ROOT);
        return tree;
    }
};

}  // namespace

TEST_F(ThisSourceTree, HasBeenFound) {
    EXPECT_TRUE(tree().contains("host/lumo.h"));
    EXPECT_TRUE(tree().contains("plugin/entry_points.cpp"));
    EXPECT_TRUE(tree().contains("tests/tree/source_tree_test.cpp"));
}

TEST_F(ThisSourceTree, IncludesRunOneWay) {
    EXPECT_EQ(forbiddenIncludes(tree()), Violations());
}

TEST_F(ThisSourceTree, QuotedIncludesAreNamedFromTheRoot) {
    EXPECT_EQ(unknownIncludes(tree()), Violations());
}

TEST_F(ThisSourceTree, IncludesTheHeaderOfASourceFileFirst) {
    EXPECT_EQ(ownHeadersNotFirst(tree()), Violations());
}

TEST_F(ThisSourceTree, HasNoIncludeCycles) {
    EXPECT_EQ(includeCycles(tree()), Violations());
}

TEST_F(ThisSourceTree, HasNoFoldersThatIncludeEachOther) {
    EXPECT_EQ(folderCycles(tree()), Violations());
}

TEST_F(ThisSourceTree, HasFormatsThatNeedNoSystem) {
    EXPECT_EQ(foreignHeadersOfFormats(tree()), Violations());
}

TEST_F(ThisSourceTree, AsksForTheSystemOnlyInPlatformAndLinkage) {
    EXPECT_EQ(systemConditions(tree()), Violations());
}

TEST_F(ThisSourceTree, AsksNoLocale) {
    EXPECT_EQ(localeFunctions(tree()), Violations());
}

TEST_F(ThisSourceTree, EveryHeaderIsGuardedByPragmaOnce) {
    EXPECT_EQ(unguardedHeaders(tree()), Violations());
}

TEST_F(ThisSourceTree, HasAPageOnWhichOnlyWhatFailedIsRed) {
    const auto styles = std::filesystem::path(SOURCE_ROOT) / "workbench/web/src/styles";
    const std::regex red(R"(([^{}]*)\{[^{}]*var\(--failed[^{}]*\})");
    const std::regex failure(R"(\.(failed|notExecuted|actionFailed|fault|broken)\b|\bmark\b)");
    std::string others;
    int rules = 0;
    for (const auto& entry : std::filesystem::directory_iterator(styles)) {
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        for (std::sregex_iterator rule(text.begin(), text.end(), red), end; rule != end; ++rule) {
            ++rules;
            std::istringstream selectors((*rule)[1]);
            for (std::string each; std::getline(selectors, each, ',');) {
                others += std::regex_search(each, failure) ? "" : each + "\n";
            }
        }
    }
    EXPECT_EQ(others, "");
    EXPECT_GT(rules, 0);
}

TEST_F(ThisSourceTree, HasBoostInOneFile) {
    std::vector<std::string> files;
    for (const auto& [path, file] : tree()) {
        const bool hasIt =
            std::any_of(file.includes.begin(), file.includes.end(),
                        [](const Include& include) { return include.path.starts_with("boost/"); });
        if (hasIt) files.push_back(path);
    }
    EXPECT_EQ(files, std::vector<std::string>{"workbench/serve/WebServer.cpp"});
}

}  // namespace intake
