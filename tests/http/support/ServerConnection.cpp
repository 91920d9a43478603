#include "tests/http/support/ServerConnection.h"

#include <sys/socket.h>

#include <array>

namespace intake {

namespace {

constexpr std::string_view END_OF_HEADER = "\r\n\r\n";
constexpr size_t LONGEST_HEADER = 65536;

}  // namespace

ServerConnection::ServerConnection(int socket, SSL_CTX* tls) : socket_(socket) {
    if (tls != nullptr) {
        tls_.reset(SSL_new(tls));
        SSL_set_fd(tls_.get(), socket);
        SSL_set_accept_state(tls_.get());
    }
}

int ServerConnection::receive(char* buffer, int capacity) {
    return tls_ != nullptr
               ? SSL_read(tls_.get(), buffer, capacity)
               : static_cast<int>(recv(socket_, buffer, static_cast<size_t>(capacity), 0));
}

std::string ServerConnection::receiveRequest() {
    std::array<char, 4096> buffer{};
    size_t end = received_.find(END_OF_HEADER);
    while (end == std::string::npos) {
        const int bytes = receive(buffer.data(), static_cast<int>(buffer.size()));
        if (bytes <= 0 || received_.size() > LONGEST_HEADER) {
            return "";
        }
        received_.append(buffer.data(), static_cast<size_t>(bytes));
        end = received_.find(END_OF_HEADER);
    }
    std::string request = received_.substr(0, end + END_OF_HEADER.size());
    received_.erase(0, request.size());
    return request;
}

void ServerConnection::send(std::string_view bytes) {
    if (tls_ != nullptr) {
        SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()));
        return;
    }
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
}

void ServerConnection::sayGoodbye() {
    if (tls_ != nullptr) {
        SSL_shutdown(tls_.get());
    }
}

void ServerConnection::waitForPeer() {
    std::array<char, 4096> ignored{};
    while (recv(socket_, ignored.data(), ignored.size(), 0) > 0) {
    }
}

void ServerConnection::resetOnClose() {
    const linger none{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &none, sizeof none);
}

}  // namespace intake
