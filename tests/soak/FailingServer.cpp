#include "tests/soak/FailingServer.h"

#include <chrono>
#include <cstdlib>

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/ServerConnection.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

constexpr size_t THREADS = 64;
constexpr const char* ONE_REQUEST = "Connection: close\r\n";

/// The number of the source that a request asks for: "GET /17.json".
int sourceOf(const std::string& request) {
    return std::atoi(request.c_str() + request.find('/') + 1);
}

std::string firstHalf(const std::string& bytes) {
    return bytes.substr(0, bytes.size() / 2);
}

}  // namespace

FailingServer::FailingServer(Documents documents)
    : documents_(std::move(documents)), listener_(listenOnLoopback(0)) {
    for (size_t i = 0; i < THREADS; ++i) {
        threads_.emplace_back([this] { serveAll(); });
    }
}

FailingServer::~FailingServer() {
    isStopping_ = true;
    shutDown(listener_);
    for (std::thread& thread : threads_) {
        thread.join();
    }
    closeSocket(listener_);
}

std::string FailingServer::url() const {
    return "http://127.0.0.1:" + std::to_string(portOf(listener_));
}

void FailingServer::serveAll() {
    while (!isStopping_) {
        const int socket = acceptConnection(listener_);
        if (socket >= 0) {
            serve(socket);
            closeSocket(socket);
        }
    }
}

void FailingServer::serve(int socket) {
    ServerConnection connection(socket, nullptr);
    const std::string request = connection.receiveRequest();
    if (request.empty()) {
        return;
    }
    const Fault fault = nextFault();
    const int source = sourceOf(request);
    const std::string answer =
        fault == Fault::STATUS
            ? reply("500 Internal Server Error", "Out of order", ONE_REQUEST).bytes
            : reply("200 OK", documents_(source), ONE_REQUEST).bytes;
    if (fault == Fault::SILENCE) {
        keepSilent();
    }
    const bool answersLate = fault == Fault::SILENCE && source % 2 == 0;
    if (fault == Fault::HALF) {
        connection.send(firstHalf(answer));
    } else if (fault == Fault::NONE || fault == Fault::STATUS || answersLate) {
        connection.send(answer);
    }
}

Fault FailingServer::nextFault() {
    constexpr unsigned PER_FAULT = 10;
    constexpr unsigned FAULTS = 4;
    const unsigned request = requests_++;
    if (isMended_) {
        return Fault::NONE;
    }
    if (outage_ != Fault::NONE) {
        return outage_;
    }
    return request % PER_FAULT == 0 ? static_cast<Fault>(1 + request / PER_FAULT % FAULTS)
                                    : Fault::NONE;
}

void FailingServer::keepSilent() const {
    for (int tenths = 0; tenths < 20 && !isStopping_; ++tenths) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

}  // namespace intake
