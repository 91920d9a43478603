// What the page asks of loads that were.

#include <fcntl.h>

#include <csignal>

#include "tests/workbench/cli/linux/ServedTest.h"

namespace {

class ServedHistory : public ServedTest {
protected:
    ServedHistory()
        : ServedTest(R"({"instances": [
            {"name": "list", "parameters": {"queryMode": 3, "filename": "list.json",
             "xpath": "rows", "mode": 1, "table": "T"}},
            {"name": "league", "parameters": {"queryMode": 3, "filename": "list.json",
             "xpath": "rows", "key": "id", "table": "L", "useAuth": 1, "userName": "u",
             "password": "s3cret"}}]})") {
        write("list.json", R"({"rows": [{"id": 1}, {"id": 2}]})");
        logIn();
    }

    rapidjson::Document history(const std::string& name, const std::string& query = "") const {
        return json(get("/api/v1/instances/" + name + "/history" + query));
    }

    void load(const std::string& name) const {
        const int before = history(name)["count"].GetInt();
        post("/api/v1/instances/" + name + "/load");
        EXPECT_TRUE(
            intake::eventually([&] { return history(name)["count"].GetInt() == before + 1; }));
    }

    /// "loaded 2 new 1 gone 0", the newest first.
    std::vector<std::string> linesOf(const std::string& name) const {
        const auto number = [](const rapidjson::Value& value) {
            return value.IsNull() ? std::string("?") : std::to_string(value.GetInt());
        };
        std::vector<std::string> lines;
        const auto told = history(name);
        for (const auto& load : told["loads"].GetArray())
            lines.push_back(std::string(load["outcome"].GetString()) + " " +
                            number(load["records"]) + " new " + number(load["new"]) + " gone " +
                            number(load["gone"]));
        return lines;
    }
};

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(ServedHistory, CountsRecordsThatAreNewOrGone) {
    load("list");
    write("list.json", R"({"rows": [{"id": 3}, {"id": 1}, {"id": 2}]})");
    load("list");
    write("list.json", R"({"rows": [{"id": 1}]})");
    load("list");
    EXPECT_EQ(linesOf("list"),
              (Lines{"loaded 1 new 0 gone 2", "loaded 3 new 1 gone 0", "loaded 2 new ? gone ?"}));
}

TEST_F(ServedHistory, ComparesWithTheLastLoadThatWroteRecords) {
    load("league");
    std::filesystem::remove(folder / "list.json");
    load("league");
    write("list.json", R"({"rows": [{"id": 2}, {"id": 9}]})");
    load("league");
    EXPECT_EQ(linesOf("league"),
              (Lines{"loaded 2 new 1 gone 1", "failed 0 new ? gone ?", "loaded 2 new ? gone ?"}));
}

TEST_F(ServedHistory, IsToldByPages) {
    for (int i = 0; i < 5; ++i)
        load("list");
    const auto page = history("list", "?from=1&count=2");
    ASSERT_EQ(page["loads"].Size(), 2U);
    EXPECT_EQ(page["count"].GetInt(), 5);
    EXPECT_EQ(page["loads"][0]["id"].GetInt(), page["loads"][1]["id"].GetInt() + 1);
    EXPECT_EQ(history("list", "?from=9")["loads"].Size(), 0U);
    EXPECT_EQ(get("/api/v1/instances/nobody/history").status, 404);
}

TEST_F(ServedHistory, KeepsWhyALoadTurnedBad) {
    load("league");
    write("list.json", R"({"row": [{"id": 1}]})");
    load("league");
    EXPECT_TRUE(
        intake::eventually([this] { return history("league")["loads"][0]["ladder"].GetBool(); }));
    write("list.json", R"({"rows": [{"id": 1}]})");
    load("league");
    const auto told = history("league");
    EXPECT_FALSE(told["loads"][0]["ladder"].GetBool());
    const std::string bad = std::to_string(told["loads"][1]["id"].GetInt());
    const Answer answer = get("/api/v1/instances/league/history/" + bad);
    EXPECT_EQ(answer.body.find("s3cret"), std::string::npos);
    const auto explained = json(answer);
    EXPECT_STREQ(explained["load"]["outcome"].GetString(), told["loads"][1]["outcome"].GetString());
    EXPECT_FALSE(explained["explanation"]["ok"].GetBool());
    const std::string good = std::to_string(told["loads"][0]["id"].GetInt());
    EXPECT_TRUE(json(get("/api/v1/instances/league/history/" + good))["explanation"].IsNull());
    EXPECT_EQ(get("/api/v1/instances/league/history/12345").status, 404);
}

TEST_F(ServedHistory, TellsPagesThatItKnowsWhyALoadTurnedBad) {
    const auto events = openEvents("0");
    write("list.json", R"({"row": [{"id": 1}]})");
    load("league");
    const std::string bad = std::to_string(history("league")["loads"][0]["id"].GetInt());
    const std::string told = "\"type\": \"ladder\", \"name\": \"league\"";
    EXPECT_TRUE(events->readTo(told).ends_with(told));
    EXPECT_NE(events->readTo("}").find("\"id\": " + bad + "}"), std::string::npos);
}

TEST_F(ServedHistory, TellsLoadsByTheNameThatTheInstanceHasNow) {
    load("list");
    rename("list", "other");
    EXPECT_STREQ(history("other")["loads"][0]["instance"].GetString(), "other");
    EXPECT_STREQ(json(get("/api/v1/loads"))["loads"][0]["instance"].GetString(), "other");
}

TEST_F(ServedHistory, OfAReportLeavesOutLinesThatAreFarTooLong) {
    const std::string start = R"({"instance": "a", "outcome": "failed", "durationMs": 1, )";
    const std::string end = R"("time": "t1"})";
    write("log.jsonl", start + end + "\n" + start + "\"error\": \"" + std::string(100'000, 'x') +
                           "\", " + end + "\n" + start + end + "\n");
    write("long.jsonl", start + "\"error\": \"" + std::string(100'000, 'x') + "\", " + end);
    const auto told = json(get("/api/v1/reports/log.jsonl"));
    EXPECT_EQ(told["count"].GetInt(), 2);
    EXPECT_EQ(told["unreadable"].GetInt(), 1);
    EXPECT_EQ(get("/api/v1/reports/long.jsonl").status, 404);
}

TEST_F(ServedHistory, OfAReportIsToldByInstanceAndPage) {
    std::filesystem::create_directories(folder / "logs");
    write(
        "logs/last-night.jsonl",
        R"({"instance": "a", "outcome": "loaded", "records": 3, "recordsBefore": 0, "leftOver": 0,)"
        R"( "leftOverAgeMs": 0, "bytes": 10, "durationMs": 250, "error": "", "time": "t1"})"
        "\n"
        R"({"instance": "b", "outcome": "failed", "durationMs": 1, "error": "s3cret", "time": "t2"})"
        "\nno json\n"
        R"({"instance": "a", "outcome": "failed", "durationMs": 1, "error": "", "time": "t3"})"
        "\n");
    write("other.jsonl", "{\"x\": 1}\n");
    write("notes.txt", "");
    EXPECT_EQ(get("/api/v1/reports").body,
              "{\n  \"files\": [\n    \"logs/last-night.jsonl\"\n  ],\n  \"leftOut\": 0,\n  "
              "\"endedEarly\": false\n}\n");
    const auto all = json(get("/api/v1/reports/logs%2Flast-night.jsonl"));
    ASSERT_EQ(all["instances"].Size(), 2U);
    const auto& first = all["instances"][0];
    EXPECT_STREQ(first["name"].GetString(), "a");
    EXPECT_EQ(first["loads"].GetInt(), 2);
    EXPECT_EQ(first["bad"].GetInt(), 1);
    EXPECT_STREQ(first["first"].GetString(), "t1");
    EXPECT_STREQ(first["last"].GetString(), "t3");
    EXPECT_EQ(all["count"].GetInt(), 3);
    EXPECT_EQ(all["unreadable"].GetInt(), 1);
    EXPECT_FALSE(all["endedEarly"].GetBool());
    EXPECT_EQ(all["loads"][0]["duration"].GetDouble(), 0.25);
    EXPECT_STREQ(all["loads"][1]["error"].GetString(), "••••");
    const auto page =
        json(get("/api/v1/reports/logs%2Flast-night.jsonl?instance=a&from=1&count=5"));
    ASSERT_EQ(page["loads"].Size(), 1U);
    EXPECT_STREQ(page["loads"][0]["time"].GetString(), "t3");
    EXPECT_EQ(page["count"].GetInt(), 2);
}

namespace {

/// A file that whoever opens it has to wait for, as on a disk that does not answer.
class HeldFile {
public:
    explicit HeldFile(const std::filesystem::path& file)
        : file_(open(file.c_str(), O_RDWR | O_CLOEXEC)) {
        fcntl(file_, F_SETSIG, SIGURG);  // tells that somebody waits, and is ignored
        isHeld_ = fcntl(file_, F_SETLEASE, F_WRLCK) == 0;
    }
    ~HeldFile() { close(file_); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    bool isHeld() const { return isHeld_; }
    bool isWaitedFor() const { return fcntl(file_, F_GETLEASE) != F_WRLCK; }

private:
    const int file_;
    bool isHeld_ = false;
};

}  // namespace

TEST_F(ServedHistory, OfAReportThatIsNotReadHoldsUpNothingElse) {
    write("night.jsonl", R"({"instance": "a", "outcome": "loaded", "durationMs": 1})");
    std::vector<std::unique_ptr<Connection>> waiting;  // more than a disk has threads
    {
        const HeldFile held(folder / "night.jsonl");
        if (!held.isHeld()) GTEST_SKIP() << "This file system has no leases.";
        for (int i = 0; i < 8; ++i) {
            waiting.push_back(std::make_unique<Connection>(port_));
            waiting.back()->send("GET /api/v1/reports/night.jsonl HTTP/1.1\r\nHost: " + self() +
                                 "\r\nConnection: close\r\n" + cookie_ + "\r\n");
        }
        EXPECT_TRUE(intake::eventually([&] { return held.isWaitedFor(); }));
        EXPECT_EQ(get("/api/v1/scene/files").status, 200);
    }
    for (const auto& connection : waiting)
        EXPECT_TRUE(connection->readAll().starts_with("HTTP/1.1 200 "));
}

TEST_F(ServedHistory, OpensNoReportOutsideOfTheStartFolder) {
    const auto outside = folder.parent_path() / "outside.jsonl";
    std::ofstream(outside) << R"({"instance": "a", "outcome": "loaded", "durationMs": 1})" << '\n';
    std::filesystem::create_symlink(outside, folder / "link.jsonl");
    for (const char* const name :
         {"..%2Foutside.jsonl", "link.jsonl", "%2Fetc%2Fpasswd", "list.json", "none.jsonl"})
        EXPECT_EQ(get("/api/v1/reports/" + std::string(name)).status, 404) << name;
    EXPECT_EQ(json(get("/api/v1/reports"))["files"].Size(), 0U);
    std::filesystem::remove(outside);
}
