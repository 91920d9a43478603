#include "platform/linux/curl/SocketWatch.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <new>

namespace intake {

void SocketWatch::watch(CURL* transfer) {
    curl_easy_setopt(transfer, CURLOPT_OPENSOCKETFUNCTION, onOpen);
    curl_easy_setopt(transfer, CURLOPT_OPENSOCKETDATA, this);
    curl_easy_setopt(transfer, CURLOPT_CLOSESOCKETFUNCTION, onClose);
    curl_easy_setopt(transfer, CURLOPT_CLOSESOCKETDATA, this);
}

uint64_t SocketWatch::bytes() const {
    uint64_t bytes = 0;
    for (const curl_socket_t socket : sockets_) {
        tcp_info info{};
        socklen_t size = sizeof info;
        if (getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0) {
            bytes += info.tcpi_bytes_received + info.tcpi_bytes_acked;
        }
    }
    return bytes;
}

/// Nothing may fly through the library.
curl_socket_t SocketWatch::onOpen(void* self, curlsocktype, curl_sockaddr* address) {
    auto& sockets = static_cast<SocketWatch*>(self)->sockets_;
    try {
        sockets.reserve(sockets.size() + 1);
    } catch (const std::bad_alloc&) {
        return CURL_SOCKET_BAD;
    }
    const curl_socket_t made =
        socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (made != CURL_SOCKET_BAD) {
        sockets.push_back(made);
    }
    return made;
}

int SocketWatch::onClose(void* self, curl_socket_t socket) {
    std::erase(static_cast<SocketWatch*>(self)->sockets_, socket);
    return close(socket);
}

}  // namespace intake
