#include "tests/http/support/loopback.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <system_error>

namespace intake {

namespace {

sockaddr_in loopbackAddress(uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int newSocket() {
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

/// Whether no other test has the port. It is this process's until it ends: a name that is not in
/// the file system goes with the socket that holds it.
bool isOurs(int port) {
    const std::string name = "intake test port " + std::to_string(port);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path + 1);
    const int holder = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    if (bind(holder, reinterpret_cast<const sockaddr*>(&address), size) == 0) {
        return true;
    }
    close(holder);
    return false;
}

bool isFree(int port) {
    try {
        closeSocket(listenOnLoopback(static_cast<uint16_t>(port)));
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

}  // namespace

int listenOnLoopback(uint16_t port) {
    const int listener = newSocket();
    const int yes = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    const sockaddr_in address = loopbackAddress(port);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, SOMAXCONN) != 0) {
        throw std::system_error(errno, std::generic_category(), "listen on loopback");
    }
    return listener;
}

uint16_t portOf(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

uint16_t freePort() {
    // Below those that the system hands out: else another test's server, given the port before ours
    // opens it, would pass for ours.
    constexpr int FIRST = 15000;
    constexpr int COUNT = 15000;
    static int taken = getpid();
    for (int attempt = 0; attempt < COUNT; ++attempt) {
        const int port = FIRST + taken++ % COUNT;
        if (isOurs(port) && isFree(port)) {
            return static_cast<uint16_t>(port);
        }
    }
    throw std::system_error(EADDRINUSE, std::generic_category(), "a free port");
}

bool isListening(uint16_t port) {
    const int client = newSocket();
    const sockaddr_in address = loopbackAddress(port);
    const bool connected =
        connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    closeSocket(client);
    return connected;
}

int acceptConnection(int listener) {
    return accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
}

int receiveBytes(int socket, char* buffer, int capacity) {
    return static_cast<int>(recv(socket, buffer, static_cast<size_t>(capacity), 0));
}

void sendBytes(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
}

void shutDown(int socket) {
    shutdown(socket, SHUT_RDWR);
}

void resetOnClose(int socket) {
    const linger none{1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &none, sizeof none);
}

void closeSocket(int socket) {
    close(socket);
}

}  // namespace intake
