// How long a server may take: any byte counts, whatever it is part of, but a header has an end.

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>

#include "platform/linux/curl/ReceivedBody.h"
#include "platform/linux/curl/origin.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

using std::chrono::milliseconds;

constexpr CurlTransfer::Times TIMES{milliseconds(900), milliseconds(10'000)};
constexpr CurlTransfer::Times HEADER_TIMES{milliseconds(10'000), milliseconds(1500)};

void receiveRequest(int connection) {
    std::array<char, 4096> request{};
    recv(connection, request.data(), request.size(), 0);
}

/// Answers one request with a text, byte by byte and with a pause before each, then says nothing.
/// Where `first` is given, one before it over the same connection is answered with that at once.
class SlowServer {
public:
    SlowServer(std::string text, milliseconds pause, std::string first = "")
        : text_(std::move(text)),
          pause_(pause),
          first_(std::move(first)),
          thread_([this] { serve(); }) {}
    ~SlowServer() {
        ended_ = true;
        shutdown(listener_, SHUT_RDWR);
        thread_.join();
        close(listener_);
    }

    std::string url() const {
        return "http://127.0.0.1:" + std::to_string(portOf(listener_)) + "/";
    }

private:
    void serve() {
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (!first_.empty()) {
            receiveRequest(connection);
            sendBytes(connection, first_);
        }
        receiveRequest(connection);
        for (const char byte : text_) {
            std::this_thread::sleep_for(pause_);
            if (ended_ || send(connection, &byte, 1, MSG_NOSIGNAL) != 1) {
                break;
            }
        }
        while (!ended_) {
            std::this_thread::sleep_for(milliseconds(10));
        }
        close(connection);
    }

    const std::string text_;
    const milliseconds pause_;
    const std::string first_;
    const int listener_ = listenOnLoopback(0);
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

/// A server that is too busy to let anyone connect for a while, then answers.
class BusyServer {
public:
    explicit BusyServer(milliseconds busy) : busy_(busy) {
        connect();  // takes the one place of those who wait
        thread_ = std::thread([this] { serve(); });
    }
    ~BusyServer() {
        thread_.join();
        close(waiting_);
        close(listener_);
    }

    std::string url() const {
        return "http://127.0.0.1:" + std::to_string(portOf(listener_)) + "/";
    }

private:
    void connect() {
        EXPECT_EQ(listen(listener_, 0), 0);
        sockaddr_in address = {};
        socklen_t size = sizeof address;
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        EXPECT_EQ(::connect(waiting_, reinterpret_cast<sockaddr*>(&address), size), 0);
    }

    void serve() {
        std::this_thread::sleep_for(busy_);
        close(accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC));
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        char request = 0;
        recv(connection, &request, 1, 0);
        const std::string answer = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbusy";
        send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
        close(connection);
    }

    const milliseconds busy_;
    const int listener_ = listenOnLoopback(0);
    const int waiting_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::thread thread_;
};

const std::string ONE = "HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n1";

/// Answers one request, breaks the connection off with the next, and is then too busy to let anyone
/// connect for a while.
class BreakingServer {
public:
    explicit BreakingServer(milliseconds busy) : busy_(busy), thread_([this] { serve(); }) {}
    ~BreakingServer() {
        shutdown(listener_, SHUT_RDWR);
        thread_.join();
        close(waiting_);
        close(listener_);
    }

    std::string url() const {
        return "http://127.0.0.1:" + std::to_string(portOf(listener_)) + "/";
    }

private:
    void serve() {
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        receiveRequest(connection);
        sendBytes(connection, ONE);
        receiveRequest(connection);
        takeTheOnePlace();
        resetOnClose(connection);
        close(connection);
        std::this_thread::sleep_for(busy_);
        close(accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC));
        answerNext();
    }

    void takeTheOnePlace() const {
        listen(listener_, 0);
        sockaddr_in address = {};
        socklen_t size = sizeof address;
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        EXPECT_EQ(::connect(waiting_, reinterpret_cast<sockaddr*>(&address), size), 0);
    }

    void answerNext() const {
        const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        receiveRequest(connection);
        sendBytes(connection, "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbusy");
        close(connection);
    }

    const milliseconds busy_;
    const int listener_ = listenOnLoopback(0);
    const int waiting_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::thread thread_;
};

class TransferTimes : public testing::Test {
protected:
    /// The body, or why there is none.
    std::string fetch(const std::string& url, CurlTransfer::Times times = TIMES) {
        CurlTransfer transfer(connections_, endMark_, times);
        ReceivedBody body(transfer, 1'000'000, nullptr);
        curl_easy_setopt(transfer.handle(), CURLOPT_URL, url.c_str());
        body.receive();
        result_ = transfer.result();
        return result_ == CURLE_OK ? body.bytes() : transfer.reason();
    }

    CurlConnections connections_;
    EndMark endMark_;
    CURLcode result_ = CURLE_OK;
};

const std::string OK = "HTTP/1.1 200 OK\r\n";

TEST_F(TransferTimes, HaveTheirPromisedLengths) {
    const CurlTransfer::Times promised;
    EXPECT_EQ(promised.silence, std::chrono::seconds(30));
    EXPECT_EQ(promised.header, std::chrono::seconds(90));
    EXPECT_EQ(promised.connect, std::chrono::seconds(60));
}

TEST_F(TransferTimes, EndATransferInWhichNothingComes) {
    const SlowServer server("", milliseconds(0));
    EXPECT_EQ(fetch(server.url()), "Nothing came for 0.9 seconds");
    EXPECT_EQ(result_, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(TransferTimes, EndAnAttemptToConnect) {
    const BusyServer server(milliseconds(600));
    CurlTransfer::Times times = TIMES;
    times.connect = milliseconds(200);
    fetch(server.url(), times);
    EXPECT_EQ(result_, CURLE_OPERATION_TIMEDOUT);
    EXPECT_EQ(fetch(server.url()), "busy");
}

TEST_F(TransferTimes, EndATransferThatStopsWithinItsBody) {
    const SlowServer server(OK + "Content-Length: 9\r\n\r\n1234", milliseconds(0));
    EXPECT_EQ(fetch(server.url()), "Nothing came for 0.9 seconds");
}

TEST_F(TransferTimes, LetAHeaderComeByteByByte) {
    const SlowServer server(OK + "Content-Length: 1\r\n\r\n1", milliseconds(30));
    EXPECT_EQ(fetch(server.url()), "1");
}

TEST_F(TransferTimes, EndAHeaderThatComesWithoutEnd) {
    const SlowServer server(OK + "X: " + std::string(1000, 'x'), milliseconds(20));
    EXPECT_EQ(fetch(server.url(), HEADER_TIMES),
              "The header of the response took more than 1.5 seconds");
    EXPECT_EQ(result_, CURLE_OPERATION_TIMEDOUT);
}

TEST_F(TransferTimes, EndAnnouncementsOfAResponseThatNeverComes) {
    std::string announcements;
    for (int i = 0; i < 1000; ++i) {
        announcements += "HTTP/1.1 102 Processing\r\n\r\n";
    }
    const SlowServer server(announcements, milliseconds(2));
    EXPECT_EQ(fetch(server.url(), HEADER_TIMES),
              "The header of the response took more than 1.5 seconds");
}

TEST_F(TransferTimes, LetABodyComeByteByByteHoweverLongThatTakes) {
    const SlowServer server(OK + "Content-Length: 100\r\n\r\n" + std::string(100, 'b'),
                            milliseconds(20));
    EXPECT_EQ(fetch(server.url()), std::string(100, 'b'));
}

TEST_F(TransferTimes, CountTheBytesThatAreNotOfTheBodyToo) {
    const SlowServer server(
        OK + "Transfer-Encoding: chunked\r\n\r\n1;" + std::string(60, 'e') + "\r\n1\r\n0\r\n\r\n",
        milliseconds(25));
    EXPECT_EQ(fetch(server.url()), "1");
}

TEST_F(TransferTimes, LeaveTheTargetOfARedirectItsOwnTimeToConnect) {
    const BusyServer target(milliseconds(700));
    const SlowServer server(
        "HTTP/1.1 302 Found\r\nLocation: " + target.url() + "\r\nContent-Length: 0\r\n\r\n",
        milliseconds(0));
    EXPECT_EQ(fetch(server.url()), "busy");
}

TEST_F(TransferTimes, EndATransferInWhichTheTargetOfARedirectSaysNothing) {
    const SlowServer target("", milliseconds(0));
    const SlowServer server(
        "HTTP/1.1 302 Found\r\nLocation: " + target.url() + "\r\nContent-Length: 0\r\n\r\n",
        milliseconds(0));
    EXPECT_EQ(fetch(server.url()), "Nothing came for 0.9 seconds");
}

TEST_F(TransferTimes, EndATransferInWhichNothingComesOverAKeptConnection) {
    const SlowServer server("", milliseconds(0), ONE);
    EXPECT_EQ(fetch(server.url()), "1");
    EXPECT_EQ(fetch(server.url()), "Nothing came for 0.9 seconds");
}

TEST_F(TransferTimes, EndAHeaderThatComesWithoutEndOverAKeptConnection) {
    const SlowServer server(OK + "X: " + std::string(1000, 'x'), milliseconds(20), ONE);
    EXPECT_EQ(fetch(server.url()), "1");
    EXPECT_EQ(fetch(server.url(), HEADER_TIMES),
              "The header of the response took more than 1.5 seconds");
}

TEST_F(TransferTimes, LeaveTheReplacementOfAKeptConnectionItsOwnTimeToConnect) {
    const BreakingServer server(milliseconds(700));
    EXPECT_EQ(fetch(server.url()), "1");
    EXPECT_EQ(fetch(server.url()), "busy");
}

TEST(Origin, IsTheSchemeTheHostAndThePort) {
    EXPECT_TRUE(mayBeToldToo("http://a.example/x", "http://A.example:80/y?z"));
    EXPECT_TRUE(mayBeToldToo("https://a.example:8443/", "https://a.example:8443/login"));
    for (const char* const other :
         {"http://a.example:8080/", "http://b.example/", "https://a.example:8443/",
          "http://a.example.b/", "ftp://a.example/", "", "a.example"}) {
        EXPECT_FALSE(mayBeToldToo("http://a.example/", other)) << other;
    }
    EXPECT_FALSE(mayBeToldToo("", ""));
}

TEST(Origin, MayBecomeSafeOnItsOwnPortAlone) {
    EXPECT_TRUE(mayBeToldToo("http://a.example/", "https://a.example/"));
    EXPECT_TRUE(mayBeToldToo("http://a.example:80/", "https://a.example:443/"));
    EXPECT_FALSE(mayBeToldToo("https://a.example/", "http://a.example/"));
    EXPECT_FALSE(mayBeToldToo("http://a.example:8080/", "https://a.example/"));
    EXPECT_FALSE(mayBeToldToo("http://a.example/", "https://b.example/"));
}

}  // namespace

}  // namespace intake
