#pragma once

#include <curl/curl.h>

#include <cstdint>
#include <vector>

namespace intake {

/// The sockets of one transfer, and what has passed through them. Set into a handle of libcurl,
/// which keeps its address; outlives all connections that were made by it. Worker thread.
class SocketWatch {
public:
    SocketWatch() = default;
    SocketWatch(const SocketWatch&) = delete;
    SocketWatch& operator=(const SocketWatch&) = delete;

    void watch(CURL* transfer);

    /// Received, and sent and acknowledged, whatever they mean.
    uint64_t bytes() const;

private:
    static curl_socket_t onOpen(void* self, curlsocktype purpose, curl_sockaddr* address);
    static int onClose(void* self, curl_socket_t socket);

    std::vector<curl_socket_t> sockets_;
};

}  // namespace intake
