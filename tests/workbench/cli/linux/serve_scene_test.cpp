// What the page asks of the scene as a file, and of the instances in it.

#include "tests/workbench/cli/linux/ServedScene.h"

TEST_F(ServedScene, IsOpenedWithWhatThePluginDoesNotKnow) {
    const auto told = scene();
    EXPECT_STREQ(told["file"].GetString(), "show.scene.json");
    EXPECT_STREQ(told["onDisk"].GetString(), "same");
    EXPECT_TRUE(told["isSaved"].GetBool());
    EXPECT_FALSE(told["locked"].GetBool());
    EXPECT_EQ(linesOf(told), Lines{});
    ASSERT_EQ(told["notes"].Size(), 1U);
    EXPECT_STREQ(told["notes"][0].GetString(),
                 "table: there is no parameter \"colour\"; the scene keeps it.");
}

TEST_F(ServedScene, ListsTheScenesBelowItsFolder) {
    std::filesystem::create_directories(folder / "shows");
    std::filesystem::create_directories(folder / ".git");
    const std::string empty = R"({"instances": []})";
    write("shows/b.json", empty);
    write(".git/c.json", empty);
    write("broken.json", R"({"instances": [)");
    const auto files = json(get("/api/v1/scene/files"));
    ASSERT_EQ(files["files"].Size(), 2U);
    EXPECT_STREQ(files["files"][0].GetString(), "show.scene.json");
    EXPECT_STREQ(files["files"][1].GetString(), "shows/b.json");
}

TEST_F(ServedScene, GivesWayToAnotherOne) {
    const auto events = openEvents("0");
    write("other.json", R"({"instances": [{"name": "table", "parameters": {"xpath": "x"}}]})");
    const auto told = json(openScene("other.json"));
    EXPECT_STREQ(told["file"].GetString(), "other.json");
    EXPECT_TRUE(told["isSaved"].GetBool());
    EXPECT_EQ(json(get("/api/v1/instances")).Size(), 1U);
    // Its "table" is another one.
    EXPECT_NE(events->readTo("\"type\": \"scene\"").find("\"names\": [\"table\", \"secret\"]"),
              std::string::npos);
    EXPECT_STREQ(json(get("/api/v1/about"))["scene"].GetString(), "other.json");
    EXPECT_EQ(set("table", R"({"xpath": "y"})"), 200);
}

TEST_F(ServedScene, StaysWhenAnotherOneCannotBeOpened) {
    write("wrong.json", R"({"instances": [{"name": "a", "parameters": {"queryMode": "none"}}]})");
    for (const char* const name : {"wrong.json", "league.json", "absent.json", "../x.json"})
        EXPECT_EQ(openScene(name).status, 422) << name;
    EXPECT_EQ(json(get("/api/v1/instances")).Size(), 2U);
}

TEST_F(ServedScene, GivesWayToNoOtherWhileItHasChangesThatThePageHasNotSeen) {
    write("other.json", R"({"instances": []})");
    const std::string wish = seen("/api/v1/scene", R"(, "file": "other.json")");
    EXPECT_EQ(set("table", R"({"xpath": "items"})"), 200);
    const Answer answer = post("/api/v1/scene/open", wish);
    EXPECT_EQ(answer.status, 409);
    EXPECT_STREQ(json(answer)["error"].GetString(), "The scene has been changed meanwhile.");
    EXPECT_EQ(post("/api/v1/scene/open", R"({"file": "other.json"})").status, 400);
    EXPECT_EQ(linesOf(scene()), (Lines{"changed  table: xpath rows → items"}));
    EXPECT_EQ(openScene("other.json").status, 200);
    EXPECT_EQ(json(get("/api/v1/instances")).Size(), 0U);
}

TEST_F(ServedScene, TellsAnInstanceFromAnotherThatHadTheName) {
    const auto idOf = [this](const std::string& name) {
        const auto id = json(get("/api/v1/instances/" + name))["id"].GetInt();
        const auto states = json(get("/api/v1/instances"));
        const auto own = std::find_if(states.Begin(), states.End(), [&](const auto& state) {
            return state["name"].GetString() == name;
        });
        EXPECT_EQ((*own)["id"].GetInt(), id);
        return id;
    };
    const int former = idOf("table");
    EXPECT_NE(idOf("secret"), former);
    write("other.json", R"({"instances": [{"name": "table", "parameters": {}}]})");
    openScene("other.json");
    const int present = idOf("table");
    EXPECT_NE(present, former);
    set("table", R"({"xpath": "x"})");
    rename("table", "tab");
    EXPECT_EQ(idOf("tab"), present);
}

TEST_F(ServedScene, TakesACopyOfAnInstance) {
    const Answer answer = post("/api/v1/instances", R"({"name": "second", "like": "table"})");
    EXPECT_EQ(answer.status, 201);
    EXPECT_STREQ(json(answer)["values"]["xpath"].GetString(), "rows");
    EXPECT_EQ(linesOf(scene()),
              (Lines{"new  second: queryMode  → JSON filename  → league.json xpath  → rows table "
                     " → T mode  → DataArray"}));
    EXPECT_EQ(save().status, 200);
    const std::string text = fileText();
    EXPECT_NE(text.find("keep me"), text.rfind("keep me"));
    post("/api/v1/instances/second/load");
    EXPECT_TRUE(intake::eventually([this] {
        return get("/api/v1/store").body.find("\"writer\": \"second\"") != std::string::npos;
    }));
}

TEST_F(ServedScene, TakesANewInstance) {
    EXPECT_EQ(post("/api/v1/instances", R"({"name": "plain"})").status, 201);
    EXPECT_EQ(linesOf(scene()), (Lines{"new  plain:"}));
    for (const char* const body :
         {R"({"name": "plain"})", R"({"name": ""})", R"({"name": ".."})", R"({"name": "a\nb"})",
          R"({"name": "x", "like": "nobody"})", "{}"})
        EXPECT_EQ(post("/api/v1/instances", body).status, 422) << body;
}

TEST_F(ServedScene, KeepsAnInstanceThatIsRenamed) {
    post("/api/v1/instances/table/load");
    EXPECT_TRUE(intake::eventually([this] {
        return get("/api/v1/instances").body.find("\"records\": 2") != std::string::npos;
    }));
    EXPECT_STREQ(json(rename("table", "tab"))["name"].GetString(), "tab");
    EXPECT_EQ(get("/api/v1/instances/table").status, 404);
    EXPECT_EQ(json(get("/api/v1/instances/tab/history"))["count"].GetInt(), 1);
    EXPECT_NE(get("/api/v1/store").body.find("\"writer\": \"tab\""), std::string::npos);
    EXPECT_EQ(linesOf(scene()), (Lines{"renamed table tab:"}));
    EXPECT_EQ(save().status, 200);
    EXPECT_NE(fileText().find("keep me"), std::string::npos);
    EXPECT_EQ(linesOf(scene()), Lines{});
    EXPECT_EQ(rename("tab", "secret").status, 422);
}

TEST_F(ServedScene, LeavesInTheStoreWhatAnInstanceWroteThatIsRemoved) {
    post("/api/v1/instances/table/load");
    EXPECT_TRUE(intake::eventually([this] {
        return get("/api/v1/store").body.find("\"writer\": \"table\"") != std::string::npos;
    }));
    const auto events = openEvents("0");
    EXPECT_EQ(remove("table").status, 200);
    EXPECT_EQ(get("/api/v1/instances/table").status, 404);
    EXPECT_NE(get("/api/v1/store/T").body.find("\"leftOver\": true"), std::string::npos);
    EXPECT_EQ(linesOf(scene()), (Lines{"gone  table:"}));
    EXPECT_NE(events->readTo("\"names\": [\"table\"]").find("\"type\": \"gone\""),
              std::string::npos);
}

TEST_F(ServedScene, RenamesAndRemovesNoInstanceThatHasChangesWhichThePageHasNotSeen) {
    const std::string former = seen("/api/v1/instances/table", R"(, "name": "tab")");
    EXPECT_EQ(set("table", R"({"xpath": "items"})"), 200);
    const auto renamed = [this](const std::string& body) {
        return post("/api/v1/instances/table/rename", body).status;
    };
    const auto removed = [this](const std::string& body) {
        return ask("DELETE /api/v1/instances/table", cookie_ + writing(), body).status;
    };
    EXPECT_EQ(renamed(former), 409);
    EXPECT_EQ(removed(former), 409);
    EXPECT_EQ(renamed(R"({"name": "tab"})"), 400);
    EXPECT_EQ(removed("{}"), 400);
    EXPECT_EQ(linesOf(scene()), (Lines{"changed  table: xpath rows → items"}));
    EXPECT_EQ(rename("table", "tab").status, 200);
    EXPECT_EQ(remove("tab").status, 200);
}

TEST_F(ServedScene, ThatIsNestedFarTooDeepIsNotOpened) {
    write("deep.json",
          R"({"instances": [], "deep": )" + std::string(200, '[') + std::string(200, ']') + "}");
    EXPECT_EQ(openScene("deep.json").status, 422);
    EXPECT_STREQ(scene()["file"].GetString(), "show.scene.json");
}

TEST_F(ServedScene, TakesNoEditForAnotherThatHadTheName) {
    const auto known = json(get("/api/v1/instances/table"))["revision"].GetInt();
    rename("table", "tab");
    post("/api/v1/instances", R"({"name": "table"})");
    const std::string edit =
        "{\"revision\": " + std::to_string(known) + R"(, "set": {"xpath": "x"}})";
    EXPECT_EQ(patch("/api/v1/instances/table", edit).status, 409);
    EXPECT_EQ(patch("/api/v1/instances/tab", edit).status, 409);
}

TEST_F(ServedScene, TellsPagesWhichInstancesHaveChangedWhenItIsOpened) {
    set("table", R"({"xpath": "items"})");
    const auto events = openEvents("0");
    openScene("show.scene.json");
    const std::string told = "\"revision\": 3,";  // of the instance
    EXPECT_TRUE(events->readTo(told).ends_with(told));
}

namespace {

class ServedFromElsewhere : public ServedTest {
protected:
    ServedFromElsewhere() : ServedTest(R"({"instances": [{"name": "a", "parameters": {}}]})", "w") {
        logIn();
    }
};

}  // namespace

TEST_F(ServedFromElsewhere, OpensItsOwnFileAgain) {
    const std::string own = json(get("/api/v1/scene"))["file"].GetString();
    EXPECT_EQ(own, std::filesystem::canonical(folder / "show.scene.json").string());
    write("show.scene.json", R"({"instances": [{"name": "b", "parameters": {}}]})");
    write("other.json", R"({"instances": []})");
    EXPECT_EQ(openScene(own).status, 200);
    EXPECT_EQ(get("/api/v1/instances/b").status, 200);
    const std::string other = (folder / "other.json").string();
    EXPECT_EQ(openScene(other).status, 422);
}
