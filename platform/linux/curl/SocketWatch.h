#pragma once

#include <curl/curl.h>

#include <cstdint>
#include <vector>

namespace intake {

/// The sockets of one worker's connections, and what passes through them. Set into a transfer of
/// libcurl, which keeps its address; outlives all connections that were made by it. Worker thread.
class SocketWatch {
public:
    SocketWatch() = default;
    SocketWatch(const SocketWatch&) = delete;
    SocketWatch& operator=(const SocketWatch&) = delete;

    /// Watches a transfer that begins.
    void watch(CURL* transfer);

    /// Says that it has ended; its connections may live on.
    void leave() { transfer_ = nullptr; }

    bool areNone() const { return sockets_.empty(); }

    /// Whether anything has come that was not taken, be it an end.
    bool haveNews() const;

    /// Received, and sent and acknowledged, whatever they mean.
    uint64_t bytes() const;

    /// Whether a new connection is being made for the request, in place of an older one that broke.
    bool isReplacing() const;

private:
    static curl_socket_t onOpen(void* self, curlsocktype purpose, curl_sockaddr* address);
    static int onClose(void* self, curl_socket_t socket);
    void forget(curl_socket_t socket);

    std::vector<curl_socket_t> sockets_;
    CURL* transfer_ = nullptr;
    size_t older_ = 0;           // so many, the first of them, are older than the transfer
    curl_off_t brokeAfter_ = 0;  // the transfer's time to connect when the last of those broke
};

}  // namespace intake
