// What the page asks for to try a load before it is on air, and to look into the store.

#include "tests/workbench/cli/linux/ServedTest.h"

namespace {

class ServedDryRun : public ServedTest {
protected:
    ServedDryRun()
        : ServedTest(R"scene({"instances": [
            {"name": "list", "parameters": {"queryMode": 3, "filename": "list.json",
             "xpath": "rows", "mode": 1, "table": "T",
             "postAction": "Next=READER_NUM_RECORDS+1; command(\"SCENE go\")"}},
            {"name": "absent", "parameters": {"queryMode": 3, "filename": "absent.json",
             "postAction": "command(\"FAILED?\")"}},
            {"name": "memory", "parameters": {"queryMode": 3, "filename": "list.json",
             "xpath": "rows/id", "mode": 4, "shmvar": "IDS"}},
            {"name": "query", "parameters": {"queryMode": 1, "connStr":
             "Driver=SQLite3;Database=none.db", "query": "DELETE FROM team"}}]})scene") {
        writeRows(2);
        logIn();
    }

    void writeRows(int count) const {
        std::string rows;
        for (int i = 0; i < count; ++i)
            rows += (i == 0 ? "" : ",") + (R"({"id": )" + std::to_string(i) + "}");
        write("list.json", R"({"rows": [)" + rows + "]}");
    }

    rapidjson::Document dryRun(const std::string& name, const std::string& body = "{}") const {
        return json(post("/api/v1/instances/" + name + "/dryrun", body));
    }

    void load(const std::string& name, int records) const {
        post("/api/v1/instances/" + name + "/load");
        EXPECT_TRUE(intake::eventually([&] {
            return get("/api/v1/loads").body.find("\"records\": " + std::to_string(records)) !=
                   std::string::npos;
        }));
    }

    /// "new T[0]: → [{id: 0}]"
    static std::vector<std::string> linesOf(const rapidjson::Document& result) {
        std::vector<std::string> lines;
        for (const auto& change : result["changes"].GetArray())
            lines.push_back(std::string(change["kind"].GetString()) + " " +
                            change["field"].GetString() + "[" + change["key"].GetString() + "]: " +
                            change["before"].GetString() + " → " + change["after"].GetString());
        return lines;
    }

    /// The store without the ages of what is in it.
    std::string store() const {
        std::string text = get("/api/v1/store").body + get("/api/v1/store/T").body;
        for (auto at = text.find("\"age\""); at != std::string::npos;
             at = text.find("\"age\"", at + 1))
            text.erase(at + 5, text.find('\n', at) - at - 5);
        return text;
    }
};

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(ServedDryRun, SaysWhatALoadWouldChange) {
    const auto result = dryRun("list");
    EXPECT_STREQ(result["outcome"].GetString(), "loaded");
    EXPECT_EQ(result["records"].GetInt(), 2);
    EXPECT_EQ(linesOf(result), (Lines{"new T[0]:  → [{id: 0}]", "new T[1]:  → [{id: 1}]",
                                      "new READER_NUM_RECORDS[]:  → 2", "new Next[]:  → 3"}));
    ASSERT_EQ(result["commands"].Size(), 1U);
    EXPECT_STREQ(result["commands"][0].GetString(), "SCENE go");
    EXPECT_STREQ(result["table"]["columns"][1].GetString(), "id");
    EXPECT_STREQ(result["table"]["rows"][1][1].GetString(), "1");
}

TEST_F(ServedDryRun, ChangesNothing) {
    load("list", 2);
    const std::string before = store();
    writeRows(3);
    dryRun("list");
    EXPECT_EQ(store(), before);
    EXPECT_EQ(output().find("Host command"), output().rfind("Host command"));  // that of the load
}

TEST_F(ServedDryRun, HasTheScriptOfALoad) {
    const auto result = dryRun("list");
    const auto loaded =
        run({"load", "--scene", "show.scene.json", "--instance", "list", "--out", "script"});
    EXPECT_EQ(result["script"].GetString(), loaded.out);
    EXPECT_EQ(result["bytes"].GetUint64(), loaded.out.size());
    EXPECT_FALSE(result["isScriptCut"].GetBool());
}

TEST_F(ServedDryRun, SaysWhatStaysFromAnOlderLoad) {
    writeRows(3);
    load("list", 3);
    write("list.json", R"({"rows": [{"id": 0}, {"id": 7}]})");
    load("list", 2);
    const auto result = dryRun("list");
    EXPECT_EQ(linesOf(result), (Lines{"left T[2]: [{id: 2}] → [{id: 2}]"}));
    EXPECT_GE(result["changes"][0]["age"].GetDouble(), 0);
    EXPECT_EQ(result["same"].GetInt(), 4);
}

TEST_F(ServedDryRun, SaysWhatStaysInAFieldThatIsNotWrittenAnyMore) {
    writeRows(1);
    load("list", 1);
    patch("/api/v1/instances/list", R"({"revision": 1, "set": {"table": "U", "postAction": ""}})");
    EXPECT_EQ(linesOf(dryRun("list")),
              (Lines{"left T[0]: [{id: 0}] → [{id: 0}]", "new U[0]:  → [{id: 0}]"}));
}

TEST_F(ServedDryRun, IsWhatTheLoadThenChanges) {
    load("list", 2);
    write("list.json", R"({"rows": [{"id": 0}, {"id": 7}, {"id": 8}]})");
    const auto result = dryRun("list");
    EXPECT_EQ(linesOf(result),
              (Lines{"changed T[1]: [{id: 1}] → [{id: 7}]", "new T[2]:  → [{id: 8}]",
                     "changed READER_NUM_RECORDS[]: 2 → 3", "changed Next[]: 3 → 4"}));
    load("list", 3);
    EXPECT_EQ(linesOf(dryRun("list")), Lines{});
}

TEST_F(ServedDryRun, SaysWhyALoadWouldFailAndWhatThenHappens) {
    const auto result = dryRun("absent");
    EXPECT_STREQ(result["outcome"].GetString(), "failed");
    EXPECT_EQ(result["records"].GetInt(), 0);
    EXPECT_NE(std::string(result["error"].GetString()), "");
    EXPECT_EQ(linesOf(result), (Lines{"new READER_NUM_RECORDS[]:  → 0"}));
    ASSERT_EQ(result["commands"].Size(), 1U);
    EXPECT_STREQ(result["commands"][0].GetString(), "FAILED?");
}

TEST_F(ServedDryRun, OfASharedMemorySaysItsText) {
    const auto result = dryRun("memory");
    EXPECT_EQ(linesOf(result), (Lines{"changed shared memory[IDS]:  → 0|1"}));
    EXPECT_EQ(result["records"].GetInt(), 2);
    post("/api/v1/instances/memory/load");
    EXPECT_TRUE(intake::eventually([this] { return linesOf(dryRun("memory")) == Lines{}; }));
}

TEST_F(ServedDryRun, OfASharedMemorySaysThatALoadThatFailsEmptiesIt) {
    load("memory", 2);
    write("list.json", "{");
    const auto result = dryRun("memory");
    EXPECT_STREQ(result["outcome"].GetString(), "failed");
    EXPECT_EQ(linesOf(result), (Lines{"changed shared memory[IDS]: 0|1 → "}));
    post("/api/v1/instances/memory/load");
    EXPECT_TRUE(intake::eventually([this] { return linesOf(dryRun("memory")) == Lines{}; }));
}

TEST_F(ServedDryRun, OfASharedMemoryThatIsNotBoundStoresNothingAsTheLoad) {
    patch("/api/v1/instances/list", R"({"revision": 1, "set": {"mode": "Shared Memory"}})");
    EXPECT_STREQ(dryRun("list")["outcome"].GetString(), "notExecuted");
    patch("/api/v1/instances/list", R"({"revision": 2, "set": {"shmvar": "LIST"}})");
    EXPECT_STREQ(dryRun("list")["outcome"].GetString(), "loaded");
}

TEST_F(ServedDryRun, OfASharedMemoryThatHasLostItsNameIsOfTheOneBefore) {
    patch("/api/v1/instances/memory", R"({"revision": 1, "set": {"shmvar": ""}})");
    EXPECT_EQ(linesOf(dryRun("memory")), (Lines{"changed shared memory[IDS]:  → 0|1"}));
}

TEST_F(ServedDryRun, DoesNotRunAQueryThatWritesUnlessToldSo) {
    EXPECT_STREQ(dryRun("query")["outcome"].GetString(), "mayWrite");
    EXPECT_STREQ(dryRun("query", R"({"allowWrites": true})")["outcome"].GetString(), "failed");
}

TEST_F(ServedDryRun, OfNobodyIsRefused) {
    EXPECT_EQ(post("/api/v1/instances/nobody/dryrun").status, 404);
}

TEST_F(ServedDryRun, TellsTheStoreByPages) {
    writeRows(5);
    load("list", 5);
    const auto fields = json(get("/api/v1/store"));
    const auto& field = fields["fields"][0];
    EXPECT_STREQ(field["name"].GetString(), "T");
    EXPECT_STREQ(field["kind"].GetString(), "array");
    EXPECT_EQ(field["size"].GetInt(), 5);
    const auto page = json(get("/api/v1/store/T?from=3&count=9"));
    ASSERT_EQ(page["entries"].Size(), 2U);
    const auto& entry = page["entries"][0];
    EXPECT_STREQ(entry["key"].GetString(), "3");
    EXPECT_STREQ(entry["value"].GetString(), "[{id: 3}]");
    EXPECT_STREQ(entry["writer"].GetString(), "list");
    EXPECT_FALSE(entry["leftOver"].GetBool());
    EXPECT_EQ(json(get("/api/v1/store/T?from=9"))["entries"].Size(), 0U);
    EXPECT_EQ(get("/api/v1/store/none").status, 404);
}

TEST_F(ServedDryRun, MarksWhatIsLeftOver) {
    writeRows(3);
    load("list", 3);
    writeRows(1);
    load("list", 1);
    const auto page = json(get("/api/v1/store/T"));
    EXPECT_FALSE(page["entries"][0]["leftOver"].GetBool());
    EXPECT_TRUE(page["entries"][2]["leftOver"].GetBool());
}

TEST_F(ServedDryRun, KeepsTheLastLoads) {
    load("list", 2);
    writeRows(1);
    load("list", 1);
    const auto told = json(get("/api/v1/loads"));
    const auto& loads = told["loads"];
    ASSERT_EQ(loads.Size(), 2U);
    EXPECT_STREQ(loads[0]["line"].GetString(), "loaded, records 2");
    EXPECT_STREQ(loads[1]["line"].GetString(), "records 2 → 1, 1 left over");
    EXPECT_STREQ(loads[1]["outcome"].GetString(), "loaded");
    EXPECT_EQ(loads[1]["before"].GetInt(), 2);
}

TEST_F(ServedDryRun, CountsRecordsThatAreNewAndGoneBesideTheLastLoadThatWentWell) {
    writeRows(3);
    load("list", 3);
    write("list.json", R"({"rows": [{"id": 0}, {"id": 7}]})");
    load("list", 2);
    write("list.json", "{");
    load("list", 0);
    write("list.json", R"({"rows": [{"id": 7}, {"id": 8}, {"id": 0}, {"id": 9}]})");
    load("list", 4);
    const auto told = json(get("/api/v1/loads"));
    const auto& loads = told["loads"];
    ASSERT_EQ(loads.Size(), 4U);
    EXPECT_EQ(loads[1]["new"].GetInt(), 1);
    EXPECT_EQ(loads[1]["gone"].GetInt(), 2);
    EXPECT_TRUE(loads[2]["new"].IsNull());
    EXPECT_EQ(loads[3]["new"].GetInt(), 2);
    EXPECT_EQ(loads[3]["gone"].GetInt(), 0);
}

TEST_F(ServedDryRun, TellsPagesOfEachLoad) {
    const auto events = openEvents("0");
    post("/api/v1/instances/list/load");
    EXPECT_NE(events->readTo("\"line\": \"loaded, records 2\"").find("\"type\": \"loads\""),
              std::string::npos);
}
