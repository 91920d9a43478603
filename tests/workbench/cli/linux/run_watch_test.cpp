// `run --watch`, while the scene file changes, and `run --explain`.

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/workbench/cli/linux/ChangingScene.h"
#include "tests/workbench/cli/linux/TerminalRun.h"

namespace {

using Events = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

struct RunWatch : ChangingScene {
    RunWatch() {
        write("source.json", arrayOf(3));
        write("scene.json", sceneWith(listInstance("list")));
    }

    ChildResult runWhileWatching(double seconds, const std::vector<std::string>& scenes) const {
        std::vector<std::function<void()>> changes;
        for (const std::string& scene : scenes)
            changes.emplace_back([this, scene] {
                replace("scene.json", scene);
                std::this_thread::sleep_for(std::chrono::milliseconds(800));
            });
        return runWhile(seconds, changes, {"--watch"});
    }

    intake::EnvironmentVariable locale{"LC_ALL", "C.UTF-8"};
};

using RunExplain = RunWatch;

}  // namespace

TEST_F(RunWatch, TakesUpInstancesThatAreNewGoneOrChanged) {
    const ChildResult result = runWhileWatching(
        5, {sceneWith(listInstance("list") + "," + listInstance("second", R"(, "table": "S")")),
            sceneWith(listInstance("second", R"(, "table": "Other")"))});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(eventsOf(result.err), (Events{"second: new", "second: changed", "list: gone"}));
    for (const char* table : {"T (3 elements)", "S (3 elements)", "Other (3 elements)"})
        EXPECT_TRUE(contains(result.out, table)) << table << result.out;
    EXPECT_TRUE(contains(result.out, "T[0], T[1], T[2]")) << result.out;
    EXPECT_TRUE(contains(result.out, "S[0], S[1], S[2]")) << result.out;
}

// The plugin looks a variable up when it is told that the name has changed.
TEST_F(RunWatch, TellsThePluginWhichParametersHaveChanged) {
    const auto sceneFor = [](const std::string& variable) {
        return sceneWith(listInstance("list", R"(, "mode": 4, "shmvar": ")" + variable + "\""));
    };
    write("scene.json", sceneFor("BEFORE"));
    const ChildResult result = runWhileWatching(3, {sceneFor("BEHIND")});
    EXPECT_EQ(eventsOf(result.err), (Events{"list: changed"}));
    EXPECT_TRUE(contains(result.out, "BEHIND    0")) << result.out;
}

TEST_F(RunWatch, GoesOnWithTheOldSceneWhenTheNewOneCannotBeRead) {
    const std::string unknown = R"({"instances": [{"name": "list", "parameters": {"hue": 1}}]})";
    const ChildResult result = runWhileWatching(5, {"{\"instances\": [", unknown});
    EXPECT_EQ(result.status, 0);
    const auto events = eventsOf(result.err);
    ASSERT_EQ(events.size(), 2U) << result.err;
    EXPECT_TRUE(contains(events[0], "scene.json: the scene file is not JSON")) << events[0];
    EXPECT_TRUE(events[0].ends_with(" The scene goes on as it was.")) << events[0];
    EXPECT_TRUE(contains(events[1], "hue")) << events[1];
    EXPECT_TRUE(contains(result.out, "T (3 elements)"));
}

TEST_F(RunWatch, IsOnlyDoneWhereItIsAskedFor) {
    const ChildResult result =
        runWhile(2.2, {[this] { replace("scene.json", sceneWith(listInstance("other"))); }});
    EXPECT_EQ(result.err, "");
}

TEST_F(RunExplain, TellsTheStageThatFailsAndItsCause) {
    write("source.json", R"({"rows": [1, 2]})");
    write("scene.json", sceneWith(listInstance("list", R"(, "xpath": "rowz")")));
    const ChildResult result = runWhile(4, {}, {"--explain"});
    const auto events = eventsOf(result.err);
    ASSERT_EQ(events.size(), 2U) << result.err;
    EXPECT_EQ(events[0], "list: empty");
    EXPECT_TRUE(events[1].starts_with("list: selection: ")) << events[1];
    EXPECT_TRUE(contains(events[1], "rowz")) << events[1];
}

TEST_F(RunExplain, SaysItInTheLineOfTheInstance) {
    write("scene.json", sceneWith(listInstance("lost", R"(, "filename": "absent.json")")));
    TerminalRun run({"run", "scene.json", "--explain", "--seconds", "4"}, folder, 120, 24);
    EXPECT_EQ(run.finish(), 1);
    EXPECT_TRUE(contains(run.terminal().lineWith("FAILED"), "  address: ")) << run.shown();
}

TEST_F(RunExplain, DoesNotKeepTheRunFromEnding) {
    write("scene.json", sceneWith(listInstance("lost", R"(, "filename": "absent.json")")));
    const auto start = std::chrono::steady_clock::now();
    runWhile(0.3, {}, {"--explain"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}
