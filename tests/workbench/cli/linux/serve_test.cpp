#include "tests/workbench/cli/linux/ServedTest.h"

namespace {

class Served : public ServedTest {
protected:
    Served()
        : ServedTest(R"({"instances": [
            {"name": "table", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "league/table", "key": "club", "table": "T"}},
            {"name": "wrong one", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "league/tabel", "key": "club", "table": "W", "useAuth": 1,
             "userName": "u", "password": "s3cret"}}]})") {
        write("league.json", R"({"league": {"table": [{"club": "a"}, {"club": "b"}]}})");
    }
};

}  // namespace

TEST_F(Served, PrintsOneLineWithTheAddress) {
    EXPECT_EQ(output(), "http://" + self() + "/#t=" + token_ + "\n");
}

TEST_F(Served, ShowsThePageWithNothingFromElsewhere) {
    for (const char* const path : {"/", "/app.js", "/app.css", "/icon.svg"}) {
        const Answer answer = get(path);
        EXPECT_EQ(answer.status, 200) << path;
        EXPECT_NE(answer.header.find("\r\nContent-Security-Policy: default-src 'none'; "),
                  std::string::npos);
        EXPECT_EQ(answer.header.find("Access-Control"), std::string::npos);
        EXPECT_FALSE(answer.body.empty());
    }
    EXPECT_EQ(get("/../league.json").status, 404);
    EXPECT_EQ(get("/league.json").status, 404);
}

TEST_F(Served, TellsNothingWithoutTheToken) {
    EXPECT_EQ(get("/api/v1/instances").status, 401);
    EXPECT_EQ(post("/api/v1/instances/table/load").status, 401);
    EXPECT_EQ(post("/api/v1/session", "{\"token\": \"0\"}").status, 401);
    EXPECT_EQ(post("/api/v1/session", "no json").status, 401);
    EXPECT_EQ(post("/api/v1/session", "[1]").status, 401);
}

TEST_F(Served, AsksNoSourceAnyMoreForThoseWhoHaveLeft) {
    logIn();
    const int silent = intake::listenOnLoopback(0);
    const std::string address = "http://127.0.0.1:" + std::to_string(intake::portOf(silent)) + "/";
    const std::string edit = R"({"revision": 1, "set": {"filename": ")" + address + "\"}}";
    EXPECT_EQ(patch("/api/v1/instances/wrong%20one", edit).status, 200);
    std::vector<std::unique_ptr<Connection>> waiting;  // twice as many as can be served at a time
    for (int i = 0; i < 8; ++i) {
        waiting.push_back(std::make_unique<Connection>(port_));
        waiting.back()->send("GET /api/v1/instances/wrong%20one/explore HTTP/1.1\r\nHost: " +
                             self() + "\r\n" + cookie_ + "\r\n");
    }
    std::vector<int> asked;
    for (int i = 0; i < 4; ++i)
        asked.push_back(intake::acceptConnection(silent));
    waiting.clear();
    const Answer answer = get("/api/v1/instances/table/explore");
    EXPECT_EQ(answer.status, 200) << answer.body;
    for (const int socket : asked)
        intake::closeSocket(socket);
    intake::closeSocket(silent);
}

TEST_F(Served, TellsWhoHasEndedTheirHalfThatNobodyWaits) {
    logIn();
    const int silent = intake::listenOnLoopback(0);
    const std::string address = "http://127.0.0.1:" + std::to_string(intake::portOf(silent)) + "/";
    const std::string edit = R"({"revision": 1, "set": {"filename": ")" + address + "\"}}";
    EXPECT_EQ(patch("/api/v1/instances/wrong%20one", edit).status, 200);
    for (const char* const what : {"explain", "dryrun"}) {
        Connection connection(port_);
        connection.send(std::string("POST /api/v1/instances/wrong%20one/") + what +
                        " HTTP/1.1\r\nHost: " + self() + "\r\n" + cookie_ + writing() +
                        "Content-Length: 2\r\n\r\n{}");
        const int asked = intake::acceptConnection(silent);
        connection.endOwnHalf();
        const std::string answer = connection.readAll();
        EXPECT_TRUE(answer.starts_with("HTTP/1.1 503 ")) << answer;
        EXPECT_NE(answer.find("Nobody waits for this any more."), std::string::npos) << answer;
        intake::closeSocket(asked);
    }
    intake::closeSocket(silent);
}

TEST_F(Served, ListensOnLoopbackOnly) {
    std::ifstream table("/proc/net/tcp");
    std::array<char, 16> wanted{};
    std::snprintf(wanted.data(), wanted.size(), ":%04X 00000000:0000", unsigned{port_});
    for (std::string line; std::getline(table, line);) {
        const bool isOurs = line.find(wanted.data()) != std::string::npos;
        EXPECT_TRUE(!isOurs || line.find("0100007F:") != std::string::npos) << line;
    }
}

TEST_F(Served, SaysHowInstancesAre) {
    logIn();
    EXPECT_NE(get("/api/v1/about").body.find("\"scene\": \"show.scene.json\""), std::string::npos);
    EXPECT_EQ(get("/api/v1/parameters").body, run({"params", "--out", "json"}).out);
    rapidjson::Document states;
    const Answer answer = get("/api/v1/instances");
    states.Parse(answer.body.c_str());
    ASSERT_TRUE(states.IsArray()) << answer.body;
    ASSERT_EQ(states.Size(), 2U);
    EXPECT_STREQ(states[0]["name"].GetString(), "table");
    EXPECT_STREQ(states[0]["state"].GetString(), "waiting");
    EXPECT_TRUE(states[0]["records"].IsNull());
    EXPECT_STREQ(states[0]["target"].GetString(), "T, DataTable");
    EXPECT_TRUE(states[0]["bytes"].IsNull());
}

TEST_F(Served, LoadsAtThePressOfAButton) {
    logIn();
    EXPECT_EQ(post("/api/v1/instances/table/load").status, 202);
    EXPECT_TRUE(intake::eventually([this] {
        return get("/api/v1/instances").body.find("\"records\": 2") != std::string::npos;
    }));
    EXPECT_EQ(post("/api/v1/instances/nobody/load").status, 404);
    EXPECT_EQ(get("/api/v1/instances/table/load").status, 404);
}

TEST_F(Served, SaysWhyAnInstanceBringsNothing) {
    logIn();
    const Answer answer = post("/api/v1/instances/wrong%20one/explain");
    EXPECT_EQ(answer.status, 200);
    rapidjson::Document ladder;
    ladder.Parse(answer.body.c_str());
    ASSERT_TRUE(ladder.IsObject()) << answer.body;
    EXPECT_FALSE(ladder["ok"].GetBool());
    EXPECT_NE(answer.body.find("\"xpath\": \"league/table\""), std::string::npos) << answer.body;
    EXPECT_EQ((answer.header + answer.body).find("s3cret"), std::string::npos);
    EXPECT_EQ(post("/api/v1/instances/nobody/explain").status, 404);
}

TEST_F(Served, TellsPagesWhatChanges) {
    logIn();
    const auto events = openEvents("0");
    EXPECT_NE(events->readTo("\"state\": \"waiting\"").find("\"seq\": 1"), std::string::npos);
    post("/api/v1/instances/table/load");
    EXPECT_NE(events->readTo("\"records\": 2").find("\"type\": \"loads\""), std::string::npos);
    EXPECT_NE(events->readTo("\"state\": \"loaded\"").find("\"type\": \"instances\""),
              std::string::npos);
}

TEST_F(Served, AsksAPageToReadAnewAfterAGap) {
    logIn();
    EXPECT_NE(openEvents("12345")->readTo("}").find("resync"), std::string::npos);
}

TEST_F(Served, OpensNoWebSocketForOthers) {
    const auto refusedWith = [this](const std::string& headers) {
        Connection connection(port_);
        connection.send("GET /api/v1/events HTTP/1.1\r\nHost: " + self() + "\r\n" + headers +
                        "Upgrade: websocket\r\nConnection: Upgrade\r\n"
                        "Sec-WebSocket-Version: 13\r\n"
                        "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n");
        return connection.readTo("\r\n").substr(9, 3);
    };
    EXPECT_EQ(refusedWith("Origin: http://" + self() + "\r\n"), "401");
    logIn();
    EXPECT_EQ(refusedWith(cookie_), "403");
    EXPECT_EQ(refusedWith(cookie_ + "Origin: http://evil.example\r\n"), "403");
}

TEST_F(Served, RefusesWhatIsTooLong) {
    logIn();
    EXPECT_EQ(post("/api/v1/session", std::string(1'000'001, ' ')).status, 413);
    EXPECT_EQ(ask("GET /", "X: " + std::string(17'000, 'x') + "\r\n").status, 431);
}

TEST_F(Served, GoesOnAfterRequestsThatAreNone) {
    for (const char* const text :
         {"\r\n\r\n", "GET\r\n\r\n", "\x16\x03\x01", "GET / HTTP/9.9\r\n\r\n",
          "GET / HTTP/1.1\r\nHost: x\r\nContent-Length: -1\r\n\r\n"}) {
        const Connection connection(port_);
        connection.send(text);
    }
    EXPECT_EQ(get("/").status, 200);
}

TEST_F(Served, AnswersSixtyFourAtATime) {
    std::vector<std::unique_ptr<Connection>> idle;
    for (int i = 0; i < 80; ++i)
        idle.push_back(std::make_unique<Connection>(port_));
    idle.clear();
    EXPECT_TRUE(intake::eventually([this] {
        Connection connection(port_);
        connection.send("GET / HTTP/1.1\r\nHost: " + self() + "\r\nConnection: close\r\n\r\n");
        return connection.readAll().starts_with("HTTP/1.1 200");
    }));
}
