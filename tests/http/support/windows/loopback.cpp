#include "tests/http/support/loopback.h"

// Must come before <windows.h>.
#include <winsock2.h>

#include <mutex>
#include <set>
#include <system_error>

namespace intake {

namespace {

/// Makes the network usable, for as long as the process lives.
void startNetwork() {
    [[maybe_unused]] static const int started = [] {
        WSADATA data{};
        return WSAStartup(MAKEWORD(2, 2), &data);
    }();
}

SOCKET toSystem(int socket) {
    return socket < 0 ? INVALID_SOCKET : static_cast<SOCKET>(socket);
}

int fromSystem(SOCKET socket) {
    return socket == INVALID_SOCKET ? -1 : static_cast<int>(socket);
}

sockaddr_in loopbackAddress(uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// The sockets that were shut down and not closed yet. Any thread.
class ShutSockets {
public:
    void insert(int socket) {
        const std::lock_guard lock(mutex_);
        sockets_.insert(socket);
    }
    void erase(int socket) {
        const std::lock_guard lock(mutex_);
        sockets_.erase(socket);
    }
    bool contains(int socket) {
        const std::lock_guard lock(mutex_);
        return sockets_.contains(socket);
    }

private:
    std::mutex mutex_;
    std::set<int> sockets_;
};

ShutSockets shutSockets;

/// Returns when recv would not wait, or when the socket was shut down, which does not wake a recv.
void waitUntilReadable(int socket) {
    int ready = 0;
    while (ready == 0 && !shutSockets.contains(socket)) {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(toSystem(socket), &readable);
        timeval limit{0, 20'000};
        ready = select(0, &readable, nullptr, nullptr, &limit);
    }
}

SOCKET newSocket() {
    startNetwork();
    return socket(AF_INET, SOCK_STREAM, 0);
}

}  // namespace

int listenOnLoopback(uint16_t port) {
    const SOCKET listener = newSocket();
    const sockaddr_in address = loopbackAddress(port);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        throw std::system_error(WSAGetLastError(), std::system_category(), "listen on loopback");
    }
    return fromSystem(listener);
}

uint16_t portOf(int socket) {
    sockaddr_in address{};
    int size = sizeof address;
    getsockname(toSystem(socket), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

uint16_t freePort() {
    const int listener = listenOnLoopback(0);
    const uint16_t port = portOf(listener);
    closeSocket(listener);
    return port;
}

bool isListening(uint16_t port) {
    const SOCKET client = newSocket();
    const sockaddr_in address = loopbackAddress(port);
    const bool connected =
        connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    closesocket(client);
    return connected;
}

int acceptConnection(int listener) {
    return fromSystem(accept(toSystem(listener), nullptr, nullptr));
}

int receiveBytes(int socket, char* buffer, int capacity) {
    waitUntilReadable(socket);
    return shutSockets.contains(socket) ? 0 : recv(toSystem(socket), buffer, capacity, 0);
}

void sendBytes(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const int sent = send(toSystem(socket), bytes.data(), static_cast<int>(bytes.size()), 0);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
}

void shutDown(int socket) {
    shutSockets.insert(socket);
    shutdown(toSystem(socket), SD_BOTH);
}

void resetOnClose(int socket) {
    const linger none{1, 0};
    setsockopt(toSystem(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&none),
               sizeof none);
}

void closeSocket(int socket) {
    shutSockets.erase(socket);
    closesocket(toSystem(socket));
}

}  // namespace intake
