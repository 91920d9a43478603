// The workbench as a server, asked over real sockets.

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <rapidjson/document.h>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/loopback.h"
#include "tests/support/eventually.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

/// A connection to the server, closed with its object.
class Connection {
public:
    explicit Connection(uint16_t port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        const timeval patience{20, 0};
        setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    }
    ~Connection() { close(socket_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void send(std::string_view text) const { intake::sendBytes(socket_, text); }

    /// Up to and with `end`; what came before the connection ended, where it does not come.
    std::string readTo(std::string_view end) {
        auto at = read_.find(end);
        std::array<char, 4096> bytes{};
        for (int count = 1; at == std::string::npos && count > 0; at = read_.find(end)) {
            count = intake::receiveBytes(socket_, bytes.data(), bytes.size());
            if (count > 0) read_.append(bytes.data(), static_cast<std::size_t>(count));
        }
        const std::size_t length =
            std::min(read_.size(), at == std::string::npos ? read_.size() : at + end.size());
        std::string text = read_.substr(0, length);
        read_.erase(0, length);
        return text;
    }

    std::string readAll() { return readTo(std::string(1, '\xFF') + "never\xFE"); }

private:
    int socket_;
    std::string read_;
};

struct Answer {
    int status = 0;
    std::string header;
    std::string body;
};

class Served : public Workbench {
protected:
    Served() {
        write("league.json", R"({"league": {"table": [{"club": "a"}, {"club": "b"}]}})");
        write("show.scene.json", R"({"instances": [
            {"name": "table", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "league/table", "key": "club", "table": "T"}},
            {"name": "wrong one", "parameters": {"queryMode": 3, "filename": "league.json",
             "xpath": "league/tabel", "key": "club", "table": "W", "useAuth": 1,
             "userName": "u", "password": "s3cret"}}]})");
        std::filesystem::current_path(folder);
        intake::withRetries([this] {
            port_ = intake::freePort();
            process_ = std::make_unique<intake::ServerProcess>(
                WORKBENCH,
                std::vector<std::string>{"serve", "show.scene.json", "--port",
                                         std::to_string(port_)},
                intake::Ports{port_}, folder / "output", SIGTERM);
        });
        EXPECT_TRUE(
            intake::eventually([this] { return output().find('\n') != std::string::npos; }));
        token_ = output().substr(output().find("#t=") + 3, 64);
    }

    std::string output() const {
        std::ifstream stream(folder / "output");
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string self() const { return "127.0.0.1:" + std::to_string(port_); }

    /// The answer to a request with these headers beside Host.
    Answer ask(const std::string& line, const std::string& headers,
               const std::string& body = "") const {
        Connection connection(port_);
        connection.send(line + " HTTP/1.1\r\nHost: " + self() + "\r\nConnection: close\r\n" +
                        headers + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
                        body);
        const std::string text = connection.readAll();
        const auto end = text.find("\r\n\r\n");
        EXPECT_NE(end, std::string::npos) << text;
        return {std::atoi(text.substr(std::min<std::size_t>(text.size(), 9), 3).c_str()),
                text.substr(0, end), text.substr(std::min(text.size(), end + 4))};
    }

    Answer get(const std::string& path) const { return ask("GET " + path, cookie_); }
    Answer post(const std::string& path, const std::string& body = "{}") const {
        return ask("POST " + path, cookie_ + writing(), body);
    }

    std::string writing() const {
        return "Origin: http://" + self() + "\r\nContent-Type: application/json\r\n";
    }

    void logIn() {
        const Answer answer = post("/api/v1/session", "{\"token\": \"" + token_ + "\"}");
        EXPECT_EQ(answer.status, 204);
        const auto start = answer.header.find("intake-");
        ASSERT_NE(start, std::string::npos) << answer.header;
        cookie_ = "Cookie: " + answer.header.substr(start, answer.header.find(';', start) - start) +
                  "\r\n";
    }

    /// A WebSocket behind its handshake.
    std::unique_ptr<Connection> openEvents(const std::string& since) const {
        auto connection = std::make_unique<Connection>(port_);
        connection->send("GET /api/v1/events?since=" + since + " HTTP/1.1\r\nHost: " + self() +
                         "\r\nOrigin: http://" + self() + "\r\n" + cookie_ +
                         "Upgrade: websocket\r\nConnection: Upgrade\r\n"
                         "Sec-WebSocket-Version: 13\r\n"
                         "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n");
        EXPECT_TRUE(connection->readTo("\r\n\r\n").starts_with("HTTP/1.1 101 "));
        return connection;
    }

    uint16_t port_ = 0;
    std::unique_ptr<intake::ServerProcess> process_;
    std::string token_;
    std::string cookie_;
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
    EXPECT_NE(events->readTo("\"records\": 2").find("\"type\": \"instances\""), std::string::npos);
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
