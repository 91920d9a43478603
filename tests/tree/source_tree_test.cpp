#include <gtest/gtest.h>

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

TEST_F(ThisSourceTree, EveryHeaderIsGuardedByPragmaOnce) {
    EXPECT_EQ(unguardedHeaders(tree()), Violations());
}

}  // namespace intake
