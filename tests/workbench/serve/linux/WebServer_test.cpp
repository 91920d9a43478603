#include "workbench/serve/WebServer.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <array>
#include <ctime>
#include <mutex>
#include <thread>

#include "tests/http/support/loopback.h"
#include "tests/support/eventually.h"

namespace {

class Greeter final : public serve::WebHandler {
public:
    void handle(const serve::WebRequest&, serve::Reply reply) override {
        serve::WebResponse response;
        response.body = "good day";
        reply(std::move(response));
    }
    std::optional<serve::WebResponse> refusesSocket(const serve::WebRequest&) override {
        return std::nullopt;
    }
    std::vector<std::string> greeting(const serve::WebRequest&) override { return {}; }
};

/// Lets the process open nothing more as long as it lives.
class NoMoreDescriptors {
public:
    NoMoreDescriptors() {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before_), 0);
        const rlimit none{0, before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    ~NoMoreDescriptors() { setrlimit(RLIMIT_NOFILE, &before_); }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

private:
    rlimit before_{};
};

void connectTo(int socket, uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
}

std::string readAll(int socket) {
    std::string text;
    std::array<char, 4096> bytes{};
    for (int count = 1; count > 0;) {
        count = intake::receiveBytes(socket, bytes.data(), bytes.size());
        if (count > 0) text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// Notes when those who ask leave, and answers nobody.
class Silent final : public serve::WebHandler {
public:
    void handle(const serve::WebRequest& request, serve::Reply reply) override {
        const std::lock_guard lock(mutex_);
        asked_.emplace_back(request.left, std::move(reply));
    }
    std::optional<serve::WebResponse> refusesSocket(const serve::WebRequest&) override {
        return std::nullopt;
    }
    std::vector<std::string> greeting(const serve::WebRequest&) override { return {}; }

    /// Whether each that has asked has left.
    std::vector<bool> left() {
        const std::lock_guard lock(mutex_);
        std::vector<bool> left;
        for (const auto& [token, reply] : asked_)
            left.push_back(token.stop_requested());
        return left;
    }

    /// Answers all, and waits for nobody any more.
    void answerAll() {
        const std::lock_guard lock(mutex_);
        for (auto& [token, reply] : asked_)
            reply({});
        asked_.clear();
    }

private:
    std::mutex mutex_;
    std::vector<std::pair<std::stop_token, serve::Reply>> asked_;
};

}  // namespace

TEST(WebServerTest, NoticesWhoDoesNotWaitForTheAnswer) {
    Silent silent;
    const auto server = serve::listenOnLoopback(0);
    server->start(silent);
    const std::array clients{socket(AF_INET, SOCK_STREAM, 0), socket(AF_INET, SOCK_STREAM, 0)};
    const auto isLeft = [&](std::vector<bool> wanted) {
        return intake::eventually([&] { return silent.left() == wanted; });
    };
    for (const int client : clients)
        connectTo(client, server->port());
    intake::sendBytes(clients[0], "GET / HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(isLeft({false}));
    intake::sendBytes(clients[1], "GET / HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(isLeft({false, false}));
    intake::closeSocket(clients[0]);
    EXPECT_TRUE(isLeft({true, false}));
    silent.answerAll();
    intake::sendBytes(clients[1], "GET / HTTP/1.1\r\n\r\n");  // the same connection once more
    EXPECT_TRUE(isLeft({false}));
    intake::closeSocket(clients[1]);
    EXPECT_TRUE(isLeft({true}));
    silent.answerAll();
    server->stop();
}

TEST(WebServerTest, RestsWhileThereAreNoDescriptorsAndThenAnswers) {
    Greeter greeter;
    const auto server = serve::listenOnLoopback(0);
    server->start(greeter);
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    {
        const NoMoreDescriptors none;
        connectTo(client, server->port());
        const std::clock_t before = std::clock();
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        // Trying again and again would take all of it; trying at times takes next to nothing.
        EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 5);
    }
    intake::sendBytes(client, "GET / HTTP/1.1\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(readAll(client).ends_with("\r\n\r\ngood day"));
    intake::closeSocket(client);
}
