#include "tests/faults/CannedServer.h"

#include <array>
#include <utility>

#include "tests/http/support/loopback.h"

namespace intake {

CannedServer::CannedServer(Responses responses)
    : responses_(std::move(responses)),
      listener_(listenOnLoopback(0)),
      thread_([this] { serve(); }) {}

CannedServer::~CannedServer() {
    shutDown(listener_);
    thread_.join();
    closeSocket(listener_);
}

std::string CannedServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(portOf(listener_)) + path;
}

void CannedServer::serve() {
    for (int connection = 0; (connection = acceptConnection(listener_)) >= 0;) {
        answer(connection);
        closeSocket(connection);
    }
}

void CannedServer::answer(int connection) const {
    std::string request;
    std::array<char, 4096> buffer{};
    while (request.find("\r\n\r\n") == std::string::npos) {
        const int received = receiveBytes(connection, buffer.data(), buffer.size());
        if (received <= 0) {
            return;
        }
        request.append(buffer.data(), static_cast<size_t>(received));
    }
    const size_t path = request.find(' ') + 1;
    sendBytes(connection,
              responses_(request.substr(path, request.find_first_of(" ?", path) - path)));
}

}  // namespace intake
