// What a lock stops, and what a draft keeps back.

#include "tests/workbench/cli/linux/ServedTest.h"

namespace {

class ServedLock : public ServedTest {
protected:
    ServedLock()
        : ServedTest(R"({"instances": [
            {"name": "table", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "rows", "mode": 1, "table": "T"}}]})") {
        write("league.json", R"({"rows": [{"id": 1}, {"id": 2}], "items": [{"id": 3}]})");
        logIn();
    }

    static constexpr const char* table = "/api/v1/instances/table";

    /// Drops the draft that is told.
    Answer discard() const { return post(std::string(table) + "/discard", seen(table)); }

    Answer lock(bool locked) const {
        return post("/api/v1/lock", locked ? R"({"locked": true})" : R"({"locked": false})");
    }

    Answer set(const std::string& values) const {
        const auto details = json(get("/api/v1/instances/table"));
        return patch("/api/v1/instances/table",
                     "{\"revision\": " + std::to_string(details["revision"].GetInt()) +
                         ", \"set\": " + values + "}");
    }

    bool hasLoaded(int records) const {
        return intake::eventually([&] {
            return get("/api/v1/loads").body.find("\"records\": " + std::to_string(records)) !=
                   std::string::npos;
        });
    }
};

}  // namespace

TEST_F(ServedLock, KeepsEditsBackAsADraft) {
    EXPECT_TRUE(json(lock(true))["locked"].GetBool());
    const auto edited = json(set(R"({"xpath": "items"})"));
    EXPECT_TRUE(edited["isDraft"].GetBool());
    EXPECT_STREQ(edited["values"]["xpath"].GetString(), "items");
    EXPECT_TRUE(json(get("/api/v1/instances"))[0]["isDraft"].GetBool());
    EXPECT_EQ(json(post("/api/v1/instances/table/dryrun"))["records"].GetInt(), 1);
    lock(false);
    const auto discarded = json(discard());
    EXPECT_FALSE(discarded["isDraft"].GetBool());
    EXPECT_STREQ(discarded["values"]["xpath"].GetString(), "rows");
}

TEST_F(ServedLock, StaysWhereARequestDoesNotSay) {
    lock(true);
    for (const char* const unclear :
         {"{}", "garbage", R"({"lokced": true})", R"({"locked": "no"})"})
        EXPECT_EQ(post("/api/v1/lock", unclear).status, 400) << unclear;
    EXPECT_TRUE(json(get("/api/v1/scene"))["locked"].GetBool());
}

TEST_F(ServedLock, LetsALiveInstanceLoadAsItWas) {
    lock(true);
    set(R"({"filename": "absent.json"})");
    lock(false);
    EXPECT_EQ(set(R"({"xpath": "items"})").status, 200);
    const auto told = json(get("/api/v1/instances/table"));
    EXPECT_TRUE(told["isDraft"].GetBool());
    EXPECT_STREQ(told["values"]["filename"].GetString(), "absent.json");
    discard();
    post("/api/v1/instances/table/load");
    EXPECT_TRUE(hasLoaded(2));
}

TEST_F(ServedLock, ShowsTheParametersOfADraftWithoutAnythingComingOfIt) {
    lock(true);
    const std::string before = get("/api/v1/store").body;
    const std::string draft = set(R"({"queryMode": "SQL", "mode": 4, "shmvar": "X",
                                      "autoLoad": true, "autoLoadInterval": 0.05})")
                                  .body;
    for (const char* const shown : {"\"connStr\"", "\"query\"", "\"shmvar\""})
        EXPECT_NE(draft.find(shown, draft.find("\"shown\"")), std::string::npos) << shown;
    EXPECT_EQ(draft.find("\"filename\"", draft.find("\"shown\"")), std::string::npos);
    EXPECT_EQ(get("/api/v1/store").body, before);
    EXPECT_EQ(get("/api/v1/loads").body, "{\"loads\": []}\n");
    const std::string live = json(get("/api/v1/instances"))[0]["target"].GetString();
    EXPECT_EQ(live, "T, DataArray");
    EXPECT_TRUE(json(get("/api/v1/instances"))[0]["next"].IsNull());
}

TEST_F(ServedLock, RefusesAWrongValueOfADraft) {
    lock(true);
    EXPECT_EQ(set(R"({"xpath": "items", "mode": "none"})").status, 422);
    EXPECT_FALSE(json(get("/api/v1/instances/table"))["isDraft"].GetBool());
}

TEST_F(ServedLock, LoadsADraftOnlyWhenTheButtonIsHeld) {
    lock(true);
    set(R"({"xpath": "items"})");
    EXPECT_EQ(post("/api/v1/instances/table/load").status, 423);
    EXPECT_EQ(post("/api/v1/instances/table/load", seen(table, R"(, "held": false)")).status, 423);
    const Answer answer = post("/api/v1/instances/table/load", seen(table, R"(, "held": true)"));
    EXPECT_EQ(answer.status, 202);
    EXPECT_TRUE(hasLoaded(1));
    const auto told = json(get("/api/v1/instances/table"));
    EXPECT_EQ(json(answer)["revision"].GetInt(), told["revision"].GetInt());
    EXPECT_FALSE(told["isDraft"].GetBool());
    EXPECT_STREQ(told["values"]["xpath"].GetString(), "items");
}

TEST_F(ServedLock, TellsNoRevisionOfALoadThatHasMadeNone) {
    const Answer answer = post("/api/v1/instances/table/load", R"({"revision": 0})");
    EXPECT_EQ(answer.status, 202);
    EXPECT_FALSE(json(answer).HasMember("revision"));
}

TEST_F(ServedLock, LoadsNoDraftAndDropsNoneThatThePageHasNotSeen) {
    lock(true);
    set(R"({"xpath": "items"})");
    const std::string former = seen(table, R"(, "held": true)");
    set(R"({"numRows": "1"})");
    const std::string present = seen(table, R"(, "held": true)");
    for (const char* const what : {"/load", "/discard"}) {
        const std::string address = std::string(table) + what;
        EXPECT_EQ(post(address, former).status, 409) << what;
        EXPECT_EQ(post(address, R"({"held": true})").status, 400) << what;
        EXPECT_EQ(post(address, R"({"held": true, "revision": "x"})").status, 400) << what;
    }
    EXPECT_TRUE(json(get(table))["isDraft"].GetBool());
    EXPECT_EQ(get("/api/v1/loads").body, "{\"loads\": []}\n");
    EXPECT_EQ(post(std::string(table) + "/load", present).status, 202);
    EXPECT_TRUE(hasLoaded(1));
}

TEST_F(ServedLock, TellsWithEachStateWhichRevisionItIs) {
    const auto events = openEvents("0");
    set(R"({"numRows": "1"})");
    const auto revision = json(get(table))["revision"].GetInt();
    EXPECT_EQ(json(get("/api/v1/instances"))[0]["revision"].GetInt(), revision);
    const std::string told = "\"revision\": " + std::to_string(revision) + ",";
    EXPECT_TRUE(events->readTo(told).ends_with(told));
}

TEST_F(ServedLock, StopsWhatChangesTheScene) {
    lock(true);
    EXPECT_EQ(post("/api/v1/instances", R"({"name": "new"})").status, 423);
    EXPECT_EQ(post("/api/v1/instances/table/rename", R"({"name": "new"})").status, 423);
    EXPECT_EQ(ask("DELETE /api/v1/instances/table", cookie_ + writing()).status, 423);
    EXPECT_EQ(post("/api/v1/scene/open", R"({"file": "show.scene.json"})").status, 409);
    const std::string stamp = json(get("/api/v1/scene"))["stamp"].GetString();
    EXPECT_EQ(post("/api/v1/scene/save", "{\"stamp\": \"" + stamp + "\"}").status, 423);
}

TEST_F(ServedLock, RunsNoQueryThatMayWrite) {
    lock(true);
    const std::string wishes = R"({"allowWrites": true})";
    EXPECT_EQ(post("/api/v1/instances/table/explain", wishes).status, 423);
    EXPECT_EQ(post("/api/v1/instances/table/dryrun", wishes).status, 200);
    set(R"({"queryMode": "SQL", "connStr": "Driver=SQLite3;Database=none.db",
            "query": "DELETE FROM team"})");
    EXPECT_EQ(post("/api/v1/instances/table/dryrun", wishes).status, 423);
}

TEST_F(ServedLock, SavesWhatThePageShowsWhenTheButtonIsHeld) {
    lock(true);
    set(R"({"xpath": "items"})");
    const std::string stamp = json(get("/api/v1/scene"))["stamp"].GetString();
    EXPECT_EQ(post("/api/v1/scene/save", "{\"held\": true, \"stamp\": \"" + stamp + "\"}").status,
              200);
    std::ifstream stream(folder / "show.scene.json");
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_NE(text.find("\"xpath\": \"items\""), std::string::npos) << text;
    EXPECT_TRUE(json(get("/api/v1/instances/table"))["isDraft"].GetBool());
}

TEST_F(ServedLock, IsToldToAllPages) {
    const auto events = openEvents("0");
    const auto before = json(get("/api/v1/scene"))["revision"].GetInt();
    const auto revision = json(lock(true))["revision"].GetInt();
    EXPECT_GT(revision, before);
    const std::string told = "\"type\": \"scene\", \"revision\": " + std::to_string(revision);
    EXPECT_TRUE(events->readTo(told).ends_with(told));
}
