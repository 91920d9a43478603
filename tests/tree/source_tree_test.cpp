#include <gmock/gmock.h>
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
    EXPECT_THAT(forbiddenIncludes(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, QuotedIncludesAreNamedFromTheRoot) {
    EXPECT_THAT(unknownIncludes(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, HasNoIncludeCycles) {
    EXPECT_THAT(includeCycles(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, HasNoFoldersThatIncludeEachOther) {
    EXPECT_THAT(folderCycles(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, HasFormatsThatNeedNoSystem) {
    EXPECT_THAT(foreignHeadersOfFormats(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, AsksForTheSystemOnlyInPlatformAndLinkage) {
    EXPECT_THAT(systemConditions(tree()), testing::IsEmpty());
}

TEST_F(ThisSourceTree, EveryHeaderIsGuardedByPragmaOnce) {
    EXPECT_THAT(unguardedHeaders(tree()), testing::IsEmpty());
}

}  // namespace intake
