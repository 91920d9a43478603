// `run` in a pipe, while its sources change.

#include <algorithm>
#include <iterator>

#include "tests/http/support/ScriptedServer.h"
#include "tests/workbench/cli/ReportLines.h"
#include "tests/workbench/cli/linux/ChangingScene.h"

using intake::reply;
using intake::ScriptedServer;

namespace {

using Events = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

struct RunEvents : ChangingScene {
    RunEvents() {
        setenv("LC_ALL", "C.UTF-8", 1);
        write("source.json", arrayOf(20));
        write("scene.json", sceneWith(listInstance("list")));
    }
};

}  // namespace

TEST_F(RunEvents, ASourceThatShrinksIsToldWithWhatIsLeftOver) {
    const ChildResult result = runWhile(
        2.2, {[&] { replace("source.json", arrayOf(1)); }, [&] { replace("source.json", "[]"); }});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(eventsOf(result.err),
              (Events{"list: records 20 → 1, 19 left over", "list: empty, 20 left over"}));
    const auto table = result.out.find("\nLeft over from older loads\n");
    ASSERT_NE(table, std::string::npos) << result.out;
    EXPECT_TRUE(contains(result.out.substr(table), "T[0], T[1], T[2] and 17 more\n"));
}

TEST_F(RunEvents, NothingIsSaidOfWhatStaysAsItIs) {
    const ChildResult result = runWhile(1.2, {});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.find("Left over"), std::string::npos);
}

TEST_F(RunEvents, AFileThatIsRemovedAndComesBackHasFailedAndRecovered) {
    const ChildResult result =
        runWhile(2.5, {[&] { std::filesystem::remove(folder / "source.json"); },
                       [&] { replace("source.json", arrayOf(20)); }});
    EXPECT_EQ(result.status, 0);
    const auto events = eventsOf(result.err);
    ASSERT_GE(events.size(), 3U);
    EXPECT_TRUE(events[0].starts_with("list: source.json was looked for as ")) << events[0];
    EXPECT_EQ(events[1], "list: Could not load \"source.json\"");
    EXPECT_EQ(events.back(), "list: recovered, 20 records");
}

TEST_F(RunEvents, RecordsThatBecomeOtherFieldsLeaveTheFormerOnes) {
    write("source.json", R"([{"id": "A", "x": 1}, {"id": "B", "x": 1}])");
    write("scene.json", sceneWith(listInstance("list", R"(, "key": "id", "mode": 2)")));
    const ChildResult result =
        runWhile(1.5, {[&] { replace("source.json", R"([{"id": "B", "y": 1}])"); }});
    EXPECT_TRUE(contains(result.out, "\nLeft over from older loads\n")) << result.out << result.err;
}

TEST_F(RunEvents, ASourceThatIsSlowerThanItsPeriodIsLateOnceForEachLoad) {
    ScriptedServer server([](const std::string&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(900));
        return reply("200 OK", R"(["a"])");
    });
    write("scene.json",
          sceneWith(listInstance("list", R"(, "filename": ")" + server.url("/") + "\"")));
    const ChildResult result = runWhile(2.5, {}, {"--report", "report.jsonl"});
    const auto events = eventsOf(result.err);
    ASSERT_EQ(events.size(), 1U) << result.err;
    EXPECT_TRUE(events[0].starts_with("list: late, no answer for 6")) << events[0];
    std::ifstream report(folder / "report.jsonl");
    const auto outcomes = outcomesOf(readReport({std::istreambuf_iterator<char>(report), {}}));
    const auto late = std::count(outcomes.begin(), outcomes.end(), "late");
    const auto loaded = std::count(outcomes.begin(), outcomes.end(), "loaded");
    EXPECT_EQ(outcomes.front(), "late");
    EXPECT_GE(loaded, 1);
    EXPECT_GE(late, 4);
    EXPECT_LE(late, 10);  // of some twelve loads that were begun
}

TEST_F(RunEvents, AnActionThatFailsIsTold) {
    write("scene.json", sceneWith(listInstance("list", R"(, "postAction": "X=1/0")")));
    const ChildResult result = runWhile(0.5, {});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(contains(result.err, " s  list: the post-update action failed: line 1, column "))
        << result.err;
}

TEST_F(RunEvents, PasswordsAndWhatCommandsATerminalAreNotPrinted) {
    write("scene.json", R"({"instances": [{"name": "red \u001b[31m\nname", "parameters": {
        "queryMode": 1, "connStr": "Provider=SQLite;Data Source=absent.db;Password=s3cret",
        "query": "SELECT 1", "key": "a", "table": "T", "autoLoad": 1, "autoLoadInterval": 0.2}}]})");
    const ChildResult result = runWhile(0.5, {});
    EXPECT_TRUE(contains(result.err, "Password=••••")) << result.err;
    EXPECT_FALSE(contains(result.err, "s3cret")) << result.err;
    EXPECT_FALSE(contains(result.err, "\x1b")) << result.err;
    EXPECT_FALSE(contains(result.err, "\nname")) << result.err;
}
