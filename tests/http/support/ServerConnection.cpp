#include "tests/http/support/ServerConnection.h"

#include <array>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

constexpr std::string_view END_OF_HEADER = "\r\n\r\n";
constexpr size_t LONGEST_HEADER = 65536;

}  // namespace

ServerConnection::ServerConnection(int socket, const TlsServer* tls)
    : socket_(socket), tls_(tls != nullptr ? tls->accept(socket) : nullptr) {}

int ServerConnection::receive(char* buffer, int capacity) {
    return tls_ != nullptr ? tls_->receive(buffer, capacity)
                           : receiveBytes(socket_, buffer, capacity);
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
        tls_->send(bytes);
    } else {
        sendBytes(socket_, bytes);
    }
}

void ServerConnection::sayGoodbye() {
    if (tls_ != nullptr) {
        tls_->sayGoodbye();
    }
}

void ServerConnection::waitForPeer() {
    std::array<char, 4096> ignored{};
    while (receiveBytes(socket_, ignored.data(), static_cast<int>(ignored.size())) > 0) {
    }
}

void ServerConnection::resetOnClose() {
    intake::resetOnClose(socket_);
}

}  // namespace intake
