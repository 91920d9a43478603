// `load` with an expectation of how many records arrive, in each target mode.

#include "tests/workbench/cli/Workbench.h"

namespace {

struct Expectations : Workbench {
    Expectations() {
        write("league.json",
              R"({"table": [{"club": "ARS", "pts": 3}, {"club": "MCI", "pts": 2},
                            {"club": "ARS", "pts": 1}, {"pts": 0}], "none": []})");
    }

    // What `load` says of the records at `xpath` when so many are expected, and its exit status.
    std::string judged(const std::vector<std::string>& settings,
                       const std::vector<std::string>& expectation,
                       const std::string& xpath = "table") const {
        std::vector<std::string> all{"queryMode=JSON", "filename=league.json", "xpath=" + xpath,
                                     "table=T"};
        all.insert(all.end(), settings.begin(), settings.end());
        const ChildResult result = load(all, expectation);
        return result.err + std::to_string(result.status);
    }

    static std::vector<std::string> expecting(const std::string& range) {
        return {"--expect-records", range};
    }
};

const std::vector<std::string> notEmpty{"--fail-on-empty"};
const std::string noneArrived = "Expected at least 1 record; none arrived.\n5";
const std::string sharedMemory = "mode=Shared Memory";

}  // namespace

TEST_F(Expectations, ATableHasARecordForEachKey) {
    const std::vector<std::string> table{"mode=DataTable", "key=club"};
    EXPECT_EQ(judged(table, expecting("2")), "0");
    EXPECT_EQ(judged(table, expecting("4")), "Expected 4 records; 2 arrived.\n5");
    EXPECT_EQ(judged({"mode=DataTable", "key=id"}, notEmpty), noneArrived);
}

TEST_F(Expectations, AnArrayHasARecordForEachIndex) {
    EXPECT_EQ(judged({"mode=DataArray"}, expecting("4")), "0");
    EXPECT_EQ(judged({"mode=DataArray", "numRows=3"}, expecting("4..5")),
              "Expected 4 to 5 records; 3 arrived.\n5");
    EXPECT_EQ(judged({"mode=DataArray"}, notEmpty, "none"), noneArrived);
}

TEST_F(Expectations, StructuresAreFieldsButForThePluginsOwnCount) {
    const std::vector<std::string> structures{"mode=DataStructure", "key=club", "varsPrefix=P_"};
    EXPECT_EQ(judged(structures, expecting("2")), "0");
    EXPECT_EQ(judged({"mode=DataStructure", "key=id"}, notEmpty), noneArrived);
}

TEST_F(Expectations, AFieldArrayHasAsManyAsItsElements) {
    const std::string fieldArray = "mode=Data Field Array";
    EXPECT_EQ(judged({fieldArray}, expecting("3"), "table/club"), "0");
    EXPECT_EQ(judged({fieldArray}, notEmpty, "none"), noneArrived);
}

TEST_F(Expectations, ATextInSharedMemoryIsDividedByItsDelimiter) {
    const std::vector<std::string> memory{sharedMemory, "delimiter=, ", "shmvar=CLUBS"};
    EXPECT_EQ(judged(memory, expecting("3"), "table/club"), "0");
    EXPECT_EQ(judged(memory, expecting("1"), "table/club"), "Expected 1 record; 3 arrived.\n5");
    EXPECT_EQ(judged(memory, notEmpty, "table/club"), "0");
}

TEST_F(Expectations, ATextInSharedMemoryThatNothingDividesCanOnlyBeEmptyOrNot) {
    const std::vector<std::string> memory{sharedMemory, "delimiter=", "shmvar=CLUBS"};
    EXPECT_EQ(judged(memory, expecting("3"), "table/club"),
              "intake-workbench: --expect-records cannot count the records of a text that nothing "
              "divides; set delimiter.\n2");
    EXPECT_EQ(judged(memory, notEmpty, "table/club"), "0");
}

TEST_F(Expectations, ADocumentThatIsLoadedWholeIsARecord) {
    for (const std::string mode : {"0", "1", "2", "3"})
        EXPECT_EQ(judged({"mode=" + mode}, notEmpty, ""), "0");
}

TEST_F(Expectations, AFailureOfTheLoadOrTheStoreIsToldFirst) {
    EXPECT_TRUE(judged({"filename=absent.json"}, notEmpty).ends_with("\"absent.json\"\n1"));
    EXPECT_EQ(judged({sharedMemory}, expecting("1")),
              "Nothing was stored: no shared memory is bound. It is bound when shmvar or shmtype "
              "changes, so set one of them.\n4");
}

TEST_F(Expectations, TheResultIsPrintedAsItIsWithoutOne) {
    const std::vector<std::string> settings{"queryMode=JSON", "filename=league.json", "xpath=none",
                                            "mode=1"};
    const ChildResult result = load(settings, {"--fail-on-empty", "--out", "json"});
    EXPECT_EQ(result.out, load(settings, {"--out", "json"}).out);
    EXPECT_EQ(result.status, 5);
}

TEST_F(Expectations, OneIsEnough) {
    EXPECT_EQ(judged({}, {"--fail-on-empty", "--expect-records", "1"}),
              "intake-workbench: --fail-on-empty excludes --expect-records\n2");
}
