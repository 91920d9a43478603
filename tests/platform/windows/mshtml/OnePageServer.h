#pragma once

// Must come before <windows.h>.
#include <winsock2.h>

#include <string>
#include <thread>

namespace intake {

/// A web server on the loopback interface that gives one answer to one request, on a thread of its
/// own. Its end waits until it has.
class OnePageServer {
public:
    /// Throws std::runtime_error.
    explicit OnePageServer(std::string answer);
    ~OnePageServer();
    OnePageServer(const OnePageServer&) = delete;
    OnePageServer& operator=(const OnePageServer&) = delete;

    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/page.html"; }

private:
    void serve();

    const std::string answer_;
    SOCKET listener_ = INVALID_SOCKET;
    int port_ = 0;
    std::thread thread_;
};

}  // namespace intake
