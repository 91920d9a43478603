#include "tests/http/support/ScriptedServer.h"

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

ScriptedServer::Responder inOrder(std::vector<Reply> replies) {
    return [replies = std::move(replies), next = size_t{0}](const std::string&) mutable {
        return next < replies.size() ? replies[next++] : Reply{"", Then::CUT};
    };
}

}  // namespace

Reply reply(const std::string& status, const std::string& body, const std::string& header) {
    return {"HTTP/1.1 " + status + "\r\n" + header +
            "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body};
}

ScriptedServer::ScriptedServer(Responder responder, std::shared_ptr<TlsServer> tls)
    : responder_(std::move(responder)),
      tls_(std::move(tls)),
      listener_(listenOnLoopback(0)),
      port_(portOf(listener_)),
      acceptor_([this] { acceptAll(); }) {}

ScriptedServer::ScriptedServer(std::vector<Reply> replies, std::shared_ptr<TlsServer> tls)
    : ScriptedServer(inOrder(std::move(replies)), std::move(tls)) {}

ScriptedServer::~ScriptedServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const int socket : sockets_) {
            shutDown(socket);
        }
    }
    isListening(port_);  // wakes who waits for the next connection
    acceptor_.join();
    for (std::thread& server : servers_) {
        server.join();
    }
    closeSocket(listener_);
}

std::string ScriptedServer::url(const std::string& path) const {
    return (tls_ != nullptr ? "https://" : "http://") + address() + path;
}

std::vector<std::string> ScriptedServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

size_t ScriptedServer::connections() {
    const std::lock_guard lock(mutex_);
    return connections_;
}

size_t ScriptedServer::openConnections() {
    const std::lock_guard lock(mutex_);
    return sockets_.size();
}

void ScriptedServer::acceptAll() {
    for (;;) {
        const int socket = acceptConnection(listener_);
        const std::lock_guard lock(mutex_);
        if (stopping_ || socket < 0) {
            closeSocket(socket);
            return;
        }
        ++connections_;
        sockets_.insert(socket);
        servers_.emplace_back([this, socket] { serve(socket); });
    }
}

void ScriptedServer::serve(int socket) {
    {
        ServerConnection connection(socket, tls_.get());
        while (answer(connection)) {
        }
    }
    const std::lock_guard lock(mutex_);
    sockets_.erase(socket);
    closeSocket(socket);
}

/// Answers one request. False when the connection is to be closed.
bool ScriptedServer::answer(ServerConnection& connection) {
    const std::string request = connection.receiveRequest();
    if (request.empty()) {
        return false;
    }
    const Reply reply = respond(request);
    connection.send(reply.bytes);
    switch (reply.then) {
        case Then::KEEP:
            return true;
        case Then::CLOSE:
            connection.sayGoodbye();
            return false;
        case Then::CUT:
            connection.resetOnClose();
            return false;
        case Then::STALL:
            connection.waitForPeer();
            return false;
    }
    return false;
}

Reply ScriptedServer::respond(const std::string& request) {
    const std::lock_guard lock(mutex_);
    requests_.push_back(request);
    return responder_(request);
}

}  // namespace intake
