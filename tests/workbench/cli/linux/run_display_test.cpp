// `run` on a terminal.

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/workbench/cli/linux/ChangingScene.h"
#include "tests/workbench/cli/linux/TerminalRun.h"

namespace {

struct RunDisplay : ChangingScene {
    RunDisplay() {
        write("source.json", arrayOf(20));
        write("scene.json", sceneWith(listInstance("list") + "," +
                                      listInstance("lost", R"(, "filename": "absent.json")") + "," +
                                      R"({"name": "manual", "parameters": {}})"));
    }

    intake::EnvironmentVariable locale{"LC_ALL", "C.UTF-8"};
    intake::EnvironmentVariable noColour{"NO_COLOR", "1"};
};

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

std::string startOf(const std::string& line, const std::string& end) {
    return line.substr(0, line.find(end));
}

/// Shows a line with this part.
std::function<bool(const TerminalModel&)> shows(const std::string& part) {
    return [part](const TerminalModel& terminal) { return !terminal.lineWith(part).empty(); };
}

std::function<bool(const TerminalModel&)> both(
    const std::function<bool(const TerminalModel&)>& one,
    const std::function<bool(const TerminalModel&)>& other) {
    return [one, other](const TerminalModel& terminal) { return one(terminal) && other(terminal); };
}

bool hidesTheCursor(const TerminalModel& terminal) {
    return !terminal.isCursorShown();
}

}  // namespace

TEST_F(RunDisplay, KeepsALineForEachInstanceThatStaysAtTheEnd) {
    TerminalRun run({"run", "scene.json"}, folder, 80, 24);
    EXPECT_TRUE(run.watchUntil(both(shows("LOADED   list"), shows("FAILED   lost"))))
        << run.shown();
    EXPECT_FALSE(run.terminal().isCursorShown());
    run.interrupt();
    EXPECT_EQ(run.finish(), 1);
    EXPECT_TRUE(run.terminal().isCursorShown());
    EXPECT_EQ(startOf(run.terminal().lineWith("list"), " s"),
              "● LOADED   list             20     0");
    EXPECT_NE(run.terminal().lineWith("✗ FAILED   lost").find("Could not load \"absent.json\""),
              std::string::npos)
        << run.shown();
    EXPECT_NE(run.terminal().lineWith("· WAITING  manual"), "");
    EXPECT_EQ(count(run.shown(), "LOADED"), 1U) << run.shown();
    EXPECT_EQ(run.written().find("\x1b[3"), std::string::npos);  // no colours
}

TEST_F(RunDisplay, FitsOnTerminalsOfAnyWidth) {
    for (const std::size_t columns : {20U, 40U, 80U, 200U}) {
        TerminalRun run({"run", "scene.json"}, folder, columns, 24);
        EXPECT_TRUE(run.watchUntil(both(shows("LOADED"), shows("FAILED")))) << run.shown();
        run.interrupt();
        EXPECT_EQ(run.finish(), 1);
        EXPECT_EQ(count(run.shown(), "FAILED"), 1U) << run.shown();
        EXPECT_EQ(count(run.shown(), "manual"), 1U) << run.shown();
        const std::string line = run.terminal().lineWith("FAILED");
        EXPECT_EQ(line.find("Could not load \"absent.json\"") != std::string::npos, columns > 40)
            << line;
    }
}

TEST_F(RunDisplay, FollowsTheSizeOfTheTerminal) {
    TerminalRun run({"run", "scene.json"}, folder, 200, 24);
    EXPECT_TRUE(run.watchUntil(shows("next in"))) << run.shown();
    run.resize(40, 10);
    EXPECT_TRUE(run.watchUntil([](const TerminalModel& terminal) {
        return terminal.lineWith("next in").empty() && count(terminal.text(), "LOADED") == 1;
    })) << run.shown();
    run.resize(120, 24);
    EXPECT_TRUE(run.watchUntil(shows("next in"))) << run.shown();
    run.interrupt();
    run.finish();
    EXPECT_EQ(count(run.shown(), "LOADED"), 1U) << run.shown();
}

TEST_F(RunDisplay, IsAsWideAsColumnsSays) {
    const intake::EnvironmentVariable columns("COLUMNS", "60");
    TerminalRun run({"run", "scene.json"}, folder, 200, 24);
    EXPECT_TRUE(run.watchUntil(shows("FAILED"))) << run.shown();
    run.interrupt();
    run.finish();
    EXPECT_EQ(run.terminal().lineWith("next in"), "");
    EXPECT_NE(run.terminal().lineWith("FAILED").find("…"), std::string::npos) << run.shown();
}

TEST_F(RunDisplay, ShowsWhatFailsFirstWhereThereIsNotRoomForAll) {
    std::string instances;
    for (int i = 0; i < 20; ++i) {
        const bool fails = i == 4 || i == 9 || i == 15;
        instances +=
            (i == 0 ? "" : ",") + listInstance("number " + std::to_string(i),
                                               fails ? R"(, "filename": "absent.json")" : "");
    }
    write("scene.json", sceneWith(instances));
    TerminalRun run({"run", "scene.json", "--seconds", "1"}, folder, 80, 10);
    EXPECT_EQ(run.finish(), 1);
    const std::string shown = run.shown();
    const std::string block = shown.substr(shown.rfind("state "));
    EXPECT_EQ(count(block, "FAILED"), 3U) << block;
    EXPECT_EQ(count(block, "\n"), 8U) << block;
    EXPECT_LT(block.rfind("FAILED"), block.find("LOADED"));
    EXPECT_TRUE(block.ends_with("and 13 more, all loaded")) << block;
}

TEST_F(RunDisplay, ShowsWhatTheRecordsWere) {
    write("scene.json", sceneWith(listInstance("list")));
    TerminalRun run({"run", "scene.json"}, folder, 80, 24);
    EXPECT_TRUE(run.watchUntil(shows("● LOADED   list             20     0"))) << run.shown();
    replace("source.json", arrayOf(1));
    EXPECT_TRUE(run.watchUntil(shows("● LOADED   list         20 → 1     0"))) << run.shown();
    EXPECT_TRUE(run.terminal().lineWith("list").ends_with("    19")) << run.shown();
    replace("source.json", "[]");
    EXPECT_TRUE(run.watchUntil(shows("○ EMPTY    list          1 → 0     0"))) << run.shown();
    run.interrupt();
    run.finish();
}

TEST_F(RunDisplay, WhatThePluginPrintsStandsAboveTheLines) {
    TerminalRun run({"run", "scene.json", "--seconds", "1.5"}, folder, 80, 12);
    run.finish();
    const std::string shown = run.shown();
    EXPECT_GE(count(shown, "ERROR: RDR_FILE::Read() failed: : No such file or directory\n"), 3U);
    EXPECT_LT(shown.rfind("ERROR"), shown.find("state "));
    EXPECT_EQ(count(shown, "state "), 1U) << shown;
}

TEST_F(RunDisplay, GivesTheTerminalBackWhileItIsSuspended) {
    TerminalRun run({"run", "scene.json"}, folder, 80, 24);
    EXPECT_TRUE(run.watchUntil(shows("LOADED"))) << run.shown();
    run.suspend();
    EXPECT_TRUE(run.watchUntil(std::not_fn(hidesTheCursor)));
    run.resume();
    EXPECT_TRUE(run.watchUntil([](const TerminalModel& terminal) {
        return hidesTheCursor(terminal) && count(terminal.text(), "LOADED") == 2;
    })) << run.shown();
    run.interrupt();
    EXPECT_EQ(run.finish(), 1);
    EXPECT_TRUE(run.terminal().isCursorShown());
}

TEST_F(RunDisplay, HidesSecretsAlsoInWhatIsPrintedMeanwhile) {
    const std::string action = R"json("command(\"SAY sesame\")")json";
    write("scene.json",
          sceneWith(listInstance("list", R"(, "password": "sesame", "postAction": )" + action)));
    TerminalRun run({"run", "scene.json"}, folder, 80, 24);
    EXPECT_TRUE(run.watchUntil(shows("Host command"))) << run.shown();
    run.interrupt();
    run.finish();
    EXPECT_NE(run.terminal().lineWith("Host command: SAY ••••"), "") << run.shown();
    EXPECT_EQ(run.written().find("sesame"), std::string::npos);
}

TEST_F(RunDisplay, IsInAsciiAndColouredAsTheEnvironmentSays) {
    const intake::EnvironmentVariable ascii("LC_ALL", "C");
    const intake::EnvironmentVariable coloured("NO_COLOR", "");
    TerminalRun run({"run", "scene.json"}, folder, 80, 24);
    EXPECT_TRUE(run.watchUntil(both(shows("LOADED"), shows("FAILED")))) << run.shown();
    run.interrupt();
    run.finish();
    EXPECT_NE(run.terminal().lineWith("* LOADED   list"), "") << run.shown();
    EXPECT_NE(run.written().find("\x1b[31mx FAILED \x1b[0m"), std::string::npos);
}

TEST_F(RunDisplay, ALineThatDoesNotChangeIsNotWrittenAgain) {
    write("scene.json", sceneWith(R"({"name": "manual", "parameters": {}})"));
    TerminalRun run({"run", "scene.json", "--seconds", "1"}, folder, 80, 24);
    run.finish();
    EXPECT_EQ(count(run.written(), "manual"), 1U) << run.written();
}
