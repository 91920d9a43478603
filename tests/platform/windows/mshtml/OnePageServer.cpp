#include "tests/platform/windows/mshtml/OnePageServer.h"

#include <array>
#include <stdexcept>

namespace intake {

OnePageServer::OnePageServer(std::string answer) : answer_(std::move(answer)) {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        throw std::runtime_error("There is no network");
    }
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof(address);
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, place, size) != 0 || listen(listener_, 1) != 0 ||
        getsockname(listener_, place, &size) != 0) {
        throw std::runtime_error("The loopback interface cannot be listened on");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

OnePageServer::~OnePageServer() {
    closesocket(listener_);
    thread_.join();
    WSACleanup();
}

void OnePageServer::serve() {
    const SOCKET connection = accept(listener_, nullptr, nullptr);
    if (connection == INVALID_SOCKET) {
        return;
    }
    std::string request;
    std::array<char, 1024> piece{};
    int got = 1;
    while (got > 0 && request.find("\r\n\r\n") == std::string::npos) {
        got = recv(connection, piece.data(), static_cast<int>(piece.size()), 0);
        request.append(piece.data(), static_cast<size_t>(got > 0 ? got : 0));
    }
    send(connection, answer_.data(), static_cast<int>(answer_.size()), 0);
    shutdown(connection, SD_SEND);
    closesocket(connection);
}

}  // namespace intake
