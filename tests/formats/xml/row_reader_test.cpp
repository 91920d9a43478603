// How large the sets are that an evaluation by the library would make: where they may be too large
// for it, its error counts.

#include "formats/xml/RowReader.h"

#include <gtest/gtest.h>

#include "formats/xml/scan_document.h"

namespace intake {

namespace {

constexpr const char* DOCUMENT =
    "<d><r i='1' j='2'><c>t</c><!--c--></r><r><c/><c/></r><x/><x/><x/></d>";

PlainPath plain(const std::string& path, PathStart start) {
    return *parsePlainPath(path, start, [](std::string_view) { return std::nullopt; });
}

/// The most nodes at a time while rows are read by a path and, unless it is empty, a key.
uint64_t mostAtATime(const std::string& path, const std::string& key = "") {
    XmlRowQuery query{plain(path, PathStart::DOCUMENT), std::nullopt, false, 0, 100};
    if (!key.empty()) {
        query.key = plain(key, PathStart::ROW);
    }
    const RowReader::Tell tell = [](xmlNode*) {};
    RowReader rows(query, tell, 1000);
    const EndMark never;
    EXPECT_TRUE(scanDocument(TextSource(DOCUMENT), "", never, rows));
    return rows.mostAtATime();
}

TEST(MostNodesAtATime, AreThoseThatAStepNamesWhateverItsPredicatesSay) {
    EXPECT_EQ(mostAtATime("/d"), 1U);
    EXPECT_EQ(mostAtATime("/d/r"), 2U);
    EXPECT_EQ(mostAtATime("/d/*[@i]/c"), 5U);
    EXPECT_EQ(mostAtATime("/d/x[1]"), 3U);
    EXPECT_EQ(mostAtATime("/d/r/c"), 3U);
}

TEST(MostNodesAtATime, AreAllElementsBehindTwoSlashes) {
    EXPECT_EQ(mostAtATime("//r"), 9U);
    EXPECT_EQ(mostAtATime("/d//r[1]"), 9U);
}

TEST(MostNodesAtATime, AreTheAttributesOrTextsThatAreFound) {
    EXPECT_EQ(mostAtATime("/d/r/@*"), 2U);
    EXPECT_EQ(mostAtATime("/d/r/@i"), 2U);
    EXPECT_EQ(mostAtATime("/d/r/c/text()"), 3U);
}

TEST(MostNodesAtATime, AreThoseOfTheLargestRowWhereOneIsLookedInto) {
    EXPECT_EQ(mostAtATime("/d/r", "."), 2U);
    EXPECT_EQ(mostAtATime("/d/r", "c"), 3U);
    EXPECT_EQ(mostAtATime("/d/r[c]"), 3U);
    EXPECT_EQ(mostAtATime("/d", "x"), 14U);
}

}  // namespace

}  // namespace intake
