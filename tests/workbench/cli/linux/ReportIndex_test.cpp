#include "workbench/cli/serve/ReportIndex.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/TempDirectory.h"

using workbench::ReportIndex;
using workbench::ReportIndexes;

namespace {

std::string line(const std::string& instance, const std::string& time,
                 const std::string& outcome = "loaded") {
    return R"({"instance": ")" + instance + R"(", "outcome": ")" + outcome +
           R"(", "durationMs": 1, "time": ")" + time + "\"}\n";
}

class ReportIndexTest : public testing::Test {
protected:
    void write(const std::string& text, std::ios::openmode mode = std::ios::trunc) const {
        std::ofstream(file, std::ios::binary | mode) << text;
    }

    const ReportIndex& index() { return indexes.of(file, {}); }

    const intake::TempDirectory folder;
    const std::string file = folder.path() / "index.jsonl";
    const std::string a = line("a", "t1");
    const std::string b = line("b", "t2", "failed");
    ReportIndexes indexes;
};

using Places = std::vector<std::uint32_t>;

}  // namespace

TEST_F(ReportIndexTest, KnowsWhereEachLoadOfAnInstanceStands) {
    write(a + b + "no report\n" + a);
    const auto second = static_cast<std::uint32_t>(a.size());
    const auto last = static_cast<std::uint32_t>(a.size() + b.size() + 10);
    EXPECT_EQ(index().placesOf(""), (Places{0, second, last}));
    EXPECT_EQ(index().placesOf("a"), (Places{0, last}));
    EXPECT_EQ(index().placesOf("b"), Places{second});
    EXPECT_EQ(index().placesOf("c"), Places{});
    EXPECT_EQ(index().unreadable(), 1U);
    EXPECT_EQ(index().instances().at("b").bad, 1U);
}

TEST_F(ReportIndexTest, GoesOnWhereAReportHasGrown) {
    write(a);
    const ReportIndex* const known = &index();
    write(b + a, std::ios::app);
    EXPECT_EQ(&index(), known);
    EXPECT_EQ(known->placesOf("").size(), 3U);
    EXPECT_EQ(known->instances().at("a").loads, 2U);
}

TEST_F(ReportIndexTest, BeginsAnewWithAFileThatWasBegunAnew) {
    write(a);
    index();
    write(b + a + a);
    EXPECT_EQ(index().placesOf("a").size(), 2U);
    EXPECT_EQ(index().placesOf("b"), Places{0});
    write(b);
    EXPECT_EQ(index().placesOf("a"), Places{});
}

TEST_F(ReportIndexTest, BeginsAnewWhereTheLastLineWasNotWhole) {
    write(a + b.substr(0, b.size() - 1));
    EXPECT_EQ(index().placesOf("").size(), 2U);
    write("\n" + a, std::ios::app);
    EXPECT_EQ(index().placesOf("").size(), 3U);
    EXPECT_EQ(index().unreadable(), 0U);
}

TEST_F(ReportIndexTest, TellsAThousandInstancesByName) {
    std::string text;
    for (int i = 0; i < 1001; ++i)
        text += line("i" + std::to_string(i), "t");
    write(text);
    EXPECT_EQ(index().placesOf("").size(), 1001U);
    EXPECT_EQ(index().placesOf("i999").size(), 1U);
    EXPECT_EQ(index().placesOf("i1000"), Places{});
}

TEST_F(ReportIndexTest, KeepsThreeReports) {
    write(a);
    index();
    const std::string first = file;
    for (const char* const name : {"1", "2", "3"}) {
        std::ofstream(file + name) << line(name, "t");
        EXPECT_EQ(indexes.of(file + name, {}).placesOf(name), Places{0}) << name;
    }
    EXPECT_EQ(index().placesOf("a"), Places{0});
}
