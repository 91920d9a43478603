#pragma once

#include <arpa/inet.h>
#include <rapidjson/document.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/loopback.h"
#include "tests/support/eventually.h"
#include "tests/workbench/cli/Workbench.h"

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

    /// Says that nothing more is sent.
    void endOwnHalf() const { shutdown(socket_, SHUT_WR); }

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

/// A scene that the built workbench serves, in a folder of its own, and a browser's requests to it.
class ServedTest : public Workbench {
protected:
    /// It starts in a folder below that of the scene file where one is given.
    explicit ServedTest(const std::string& scene, const std::string& start = ".") {
        write("show.scene.json", scene);
        std::filesystem::create_directories(folder / start);
        std::filesystem::current_path(folder / start);
        intake::withRetries([this] {
            port_ = intake::freePort();
            process_ = std::make_unique<intake::ServerProcess>(
                WORKBENCH,
                std::vector<std::string>{"serve", (folder / "show.scene.json").string(), "--port",
                                         std::to_string(port_)},
                intake::Ports{port_}, folder / "output", SIGTERM);
        });
        EXPECT_TRUE(intake::eventually([this] {
            const std::string text = output();
            return text.find('\n', std::min(text.find("#t="), text.size())) != std::string::npos;
        }));
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
    Answer patch(const std::string& path, const std::string& body) const {
        return ask("PATCH " + path, cookie_ + writing(), body);
    }
    Answer post(const std::string& path, const std::string& body = "{}") const {
        return ask("POST " + path, cookie_ + writing(), body);
    }

    /// What is told at this address, as a body that names its revision, with further members.
    std::string seen(const std::string& path, const std::string& more = "") const {
        const auto told = json(get(path));
        return "{\"revision\": " + std::to_string(told["revision"].GetUint64()) + more + "}";
    }

    /// As it is told just now.
    Answer rename(const std::string& name, const std::string& other) const {
        const std::string path = "/api/v1/instances/" + name;
        return post(path + "/rename", seen(path, ", \"name\": \"" + other + '"'));
    }
    Answer remove(const std::string& name) const {
        const std::string path = "/api/v1/instances/" + name;
        return ask("DELETE " + path, cookie_ + writing(), seen(path));
    }

    Answer openScene(const std::string& file) const {
        return post("/api/v1/scene/open", seen("/api/v1/scene", ", \"file\": \"" + file + '"'));
    }

    std::string writing() const {
        return "Origin: http://" + self() + "\r\nContent-Type: application/json\r\n";
    }

    /// An answer that is JSON.
    static rapidjson::Document json(const Answer& answer) {
        rapidjson::Document document;
        document.Parse(answer.body.c_str());
        EXPECT_FALSE(document.HasParseError()) << answer.body;
        return document;
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
