// The numbers that the page draws.

#include "tests/workbench/cli/linux/ServedTest.h"

namespace {

class ServedPlot : public ServedTest {
protected:
    ServedPlot()
        : ServedTest(R"({"instances": [
            {"name": "table", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "rows", "key": "club", "table": "T"}},
            {"name": "score", "parameters": {"queryMode": 3, "filename": "score.json",
             "table": "Score", "mode": "DataStructure"}}]})") {
        write("league.json", R"({"rows": [
            {"club": "a", "points": 1.5, "goals": {"for": 7}, "odds": "2.5"},
            {"club": "b", "points": "none", "goals": {"for": 9}, "odds": "x"},
            {"club": "c"}]})");
        write("score.json", R"({"home": 1, "away": "2", "name": "x"})");
        logIn();
    }

    void load(const std::string& name) const {
        const std::string history = "/api/v1/instances/" + name + "/history";
        const int before = json(get(history))["count"].GetInt();
        post("/api/v1/instances/" + name + "/load");
        EXPECT_TRUE(
            intake::eventually([&] { return json(get(history))["count"].GetInt() == before + 1; }));
    }

    /// A secret of one instance is one for all.
    void hideInScore(const std::string& password) const {
        const std::string revision =
            std::to_string(json(get("/api/v1/instances/score"))["revision"].GetInt());
        patch("/api/v1/instances/score",
              "{\"revision\": " + revision +
                  R"(, "set": {"useAuth": true, "userName": "u", "password": ")" + password +
                  "\"}}");
    }
};

}  // namespace

TEST_F(ServedPlot, TellsWhichColumnsOfAFieldAreNumbers) {
    load("table");
    const auto told = json(get("/api/v1/store/T/columns"));
    EXPECT_EQ(told["records"].GetInt(), 3);
    std::string columns;
    for (const auto& column : told["columns"].GetArray())
        columns += std::string(column["name"].GetString()) + " " +
                   std::to_string(column["numbers"].GetInt()) + " " +
                   std::to_string(column["texts"].GetInt()) + " " +
                   std::to_string(column["others"].GetInt()) + "; ";
    EXPECT_EQ(columns, "club 0 0 3; points 1 0 1; goals.for 2 0 0; odds 0 1 1; ");
    EXPECT_EQ(get("/api/v1/store/none/columns").status, 404);
}

TEST_F(ServedPlot, TellsAColumnRecordByRecord) {
    load("table");
    EXPECT_EQ(get("/api/v1/store/T/column/points").body,
              "{\"keys\": [\"a\", \"b\", \"c\"], \"values\": [1.5, null, null], "
              "\"written\": [\"1.5\", \"none\", \"\"], \"leftOut\": 0}\n");
    EXPECT_NE(get("/api/v1/store/T/column/goals.for").body.find("\"values\": [7, 9, null]"),
              std::string::npos);
}

TEST_F(ServedPlot, TellsAtMostTenThousandRecords) {
    std::string rows;
    for (int i = 0; i < 10'001; ++i)
        rows += (i == 0 ? "{\"club\": " : ", {\"club\": ") + std::to_string(i) + "}";
    write("league.json", "{\"rows\": [" + rows + "]}");
    load("table");
    const auto told = json(get("/api/v1/store/T/column/club"));
    EXPECT_EQ(told["values"].Size(), 10'000U);
    EXPECT_EQ(told["leftOut"].GetInt(), 1);
}

TEST_F(ServedPlot, KeepsTheNumbersOfEachLoad) {
    load("score");
    write("score.json", R"({"home": 3, "away": "2", "name": "x"})");
    load("score");
    const auto told = json(get("/api/v1/series?instance=score"));
    std::string series;
    for (const auto& each : told["series"].GetArray())
        series += std::string(each["field"].GetString()) + " " +
                  std::to_string(each["points"].GetInt()) +
                  (each["texts"].GetBool() ? " texts; " : "; ");
    EXPECT_EQ(series, "Score.away 2 texts; Score.home 2; ");
    EXPECT_EQ(told["leftOut"].GetInt(), 0);
    const auto home = json(get("/api/v1/series/Score.home?instance=score"));
    ASSERT_EQ(home["values"].Size(), 2U);
    EXPECT_EQ(home["values"][0].GetInt(), 1);
    EXPECT_EQ(home["values"][1].GetInt(), 3);
    EXPECT_LE(home["times"][0].GetDouble(), home["times"][1].GetDouble());
    EXPECT_EQ(get("/api/v1/series/Score.none?instance=score").status, 404);
    EXPECT_EQ(get("/api/v1/series/Score.home?instance=nobody").status, 404);
}

TEST_F(ServedPlot, DrawsNoSecret) {
    hideInScore("4711");
    write("league.json",
          R"({"rows": [{"club": "a", "points": 4711}, {"club": "b", "points": 5}]})");
    load("table");
    EXPECT_EQ(get("/api/v1/store/T/column/points").body,
              "{\"keys\": [\"a\", \"b\"], \"values\": [null, 5], "
              "\"written\": [\"••••\", \"5\"], \"leftOut\": 0}\n");
}

TEST_F(ServedPlot, DrawsNoSecretOverTimeEither) {
    hideInScore("4711");
    write("score.json", R"({"home": 4711, "away": 2, "of 4711": 3})");
    load("score");
    EXPECT_NE(get("/api/v1/series/Score.home?instance=score").body.find("\"values\": [null]"),
              std::string::npos);
    EXPECT_EQ(get("/api/v1/series?instance=score").body.find("4711"), std::string::npos);
}

TEST_F(ServedPlot, TellsAColumnByTheNameThatItIsToldBy) {
    hideInScore("s3cret");
    write("league.json", R"({"rows": [{"club": "a", "s3cret": 8}]})");
    load("table");
    const std::string columns = get("/api/v1/store/T/columns").body;
    EXPECT_NE(columns.find("\"••••\""), std::string::npos) << columns;
    const Answer told = get("/api/v1/store/T/column/%E2%80%A2%E2%80%A2%E2%80%A2%E2%80%A2");
    EXPECT_NE(told.body.find("\"values\": [8]"), std::string::npos) << told.body;
}

TEST_F(ServedPlot, TellsNoSecretThatANameOrAKeyIs) {
    hideInScore("s3cret");
    write("league.json", R"({"rows": [{"club": "s3cret", "s3cret": 8}]})");
    load("table");
    write("score.json", R"({"s3cret": "s3cret"})");
    load("score");
    for (const char* path : {"store", "store/T", "store/Score", "store/T/columns",
                             "store/T/column/club", "series?instance=score"}) {
        const Answer told = get(std::string("/api/v1/") + path);
        EXPECT_EQ(told.status, 200) << path;
        EXPECT_EQ(told.body.find("s3cret"), std::string::npos) << path << told.body;
    }
    const Answer dryRun = post("/api/v1/instances/table/dryrun");
    EXPECT_NE(dryRun.body.find("\"columns\""), std::string::npos) << dryRun.body;
    EXPECT_EQ(dryRun.body.find("s3cret"), std::string::npos) << dryRun.body;
}

TEST_F(ServedPlot, FindsAFieldByTheNameThatItIsToldBy) {
    load("table");
    write("score.json", R"({"home": 1})");
    load("score");
    hideInScore("Score");
    const std::string name = json(get("/api/v1/store"))["fields"][1]["name"].GetString();
    EXPECT_EQ(name, "••••");
    const std::string told = "/api/v1/store/%E2%80%A2%E2%80%A2%E2%80%A2%E2%80%A2";
    EXPECT_NE(get(told).body.find("\"home\""), std::string::npos);
    EXPECT_EQ(get(told + "/columns").status, 200);
}
