#include "tests/faults/CuttingProxy.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

using Buffer = std::array<char, 4096>;

int connectTo(uint16_t port) {
    const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connect(made, reinterpret_cast<sockaddr*>(&address), sizeof address);
    return made;
}

}  // namespace

CuttingProxy::CuttingProxy(uint16_t server)
    : server_(server), listener_(listenOnLoopback(0)), acceptor_([this] { acceptAll(); }) {}

CuttingProxy::~CuttingProxy() {
    isEnding_ = true;
    shutDown(listener_);
    acceptor_.join();
    closeSocket(listener_);
    {
        const std::lock_guard lock(mutex_);
        std::for_each(sockets_.begin(), sockets_.end(), shutDown);
    }
    for (std::thread& thread : threads_) {
        thread.join();
    }
    std::for_each(sockets_.begin(), sockets_.end(), closeSocket);
}

uint16_t CuttingProxy::port() const {
    return portOf(listener_);
}

void CuttingProxy::cutBehind(uint64_t bytes, Then then) {
    limit_ = bytes;
    then_ = then;
}

void CuttingProxy::acceptAll() {
    for (int client = 0; (client = acceptConnection(listener_)) >= 0;) {
        serve(client);
    }
}

void CuttingProxy::serve(int client) {
    const int server = connectTo(server_);
    const std::lock_guard lock(mutex_);
    sockets_.insert(sockets_.end(), {client, server});
    threads_.emplace_back([=, this] { passOn(client, server); });
    threads_.emplace_back([=, this] { passAnswers(server, client); });
}

void CuttingProxy::passOn(int from, int to) {
    Buffer buffer{};
    for (int count = 0; (count = receiveBytes(from, buffer.data(), buffer.size())) > 0;) {
        sendBytes(to, {buffer.data(), static_cast<size_t>(count)});
    }
    shutDown(to);
}

void CuttingProxy::passAnswers(int server, int client) {
    const uint64_t limit = limit_;
    const Then then = then_;
    passed_ = 0;
    Buffer buffer{};
    while (passed_ < limit) {
        const auto most = static_cast<int>(std::min<uint64_t>(buffer.size(), limit - passed_));
        const int count = receiveBytes(server, buffer.data(), most);
        if (count <= 0) {
            break;
        }
        passed_ += static_cast<uint64_t>(count);
        sendBytes(client, {buffer.data(), static_cast<size_t>(count)});
    }
    if (then == Then::CLOSE || isEnding_) {
        shutDown(client);
        shutDown(server);
    }
}

}  // namespace intake
