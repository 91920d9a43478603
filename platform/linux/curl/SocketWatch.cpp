#include "platform/linux/curl/SocketWatch.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <new>

#include "platform/linux/curl/time_to_connect.h"

namespace intake {

namespace {

constexpr curl_off_t NEVER = -1;

/// The way to the server may have changed while the connection was idle, and nobody says so. A
/// server that is there acknowledges at once what it is sent, however long its answer takes.
void breakWithoutAcknowledgement(curl_socket_t socket) {
    constexpr unsigned milliseconds = 4000;
    setsockopt(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, &milliseconds, sizeof milliseconds);
}

bool hasNews(curl_socket_t socket) {
    pollfd state{socket, POLLIN | POLLPRI | POLLRDHUP, 0};
    return poll(&state, 1, 0) != 0;
}

}  // namespace

void SocketWatch::watch(CURL* transfer) {
    transfer_ = transfer;
    older_ = sockets_.size();
    brokeAfter_ = NEVER;
    std::for_each(sockets_.begin(), sockets_.end(), breakWithoutAcknowledgement);
    curl_easy_setopt(transfer, CURLOPT_OPENSOCKETFUNCTION, onOpen);
    curl_easy_setopt(transfer, CURLOPT_OPENSOCKETDATA, this);
    curl_easy_setopt(transfer, CURLOPT_CLOSESOCKETFUNCTION, onClose);
    curl_easy_setopt(transfer, CURLOPT_CLOSESOCKETDATA, this);
}

bool SocketWatch::haveNews() const {
    return std::any_of(sockets_.begin(), sockets_.end(), hasNews);
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

bool SocketWatch::isReplacing() const {
    return brokeAfter_ != NEVER && timeToConnect(transfer_) == brokeAfter_;
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
    static_cast<SocketWatch*>(self)->forget(socket);
    return close(socket);
}

void SocketWatch::forget(curl_socket_t socket) {
    const auto found = std::find(sockets_.begin(), sockets_.end(), socket);
    if (found == sockets_.end()) {
        return;
    }
    const bool isOlder = static_cast<size_t>(found - sockets_.begin()) < older_;
    sockets_.erase(found);
    older_ -= isOlder ? 1 : 0;
    if (isOlder && transfer_ != nullptr) {
        brokeAfter_ = timeToConnect(transfer_);
    }
}

}  // namespace intake
