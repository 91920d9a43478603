#include "tests/http/support/ScriptedServer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

ScriptedServer::Responder inOrder(std::vector<Reply> replies) {
    return [replies = std::move(replies), next = size_t{0}](const std::string&) mutable {
        return next < replies.size() ? replies[next++] : Reply{"", Then::CUT};
    };
}

SSL_CTX* makeTls(const TlsFiles& files) {
    SSL_CTX* const tls = SSL_CTX_new(TLS_server_method());
    SSL_CTX_use_certificate_chain_file(tls, files.certificate.c_str());
    SSL_CTX_use_PrivateKey_file(tls, files.key.c_str(), SSL_FILETYPE_PEM);
    return tls;
}

/// A client that goes must not end the test.
void blockBrokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

Reply reply(const std::string& status, const std::string& body, const std::string& header) {
    return {"HTTP/1.1 " + status + "\r\n" + header +
            "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body};
}

ScriptedServer::ScriptedServer(Responder responder, const TlsFiles* tls)
    : responder_(std::move(responder)),
      tls_(tls != nullptr ? makeTls(*tls) : nullptr),
      listener_(listenOnLoopback(0)),
      port_(portOf(listener_)),
      acceptor_([this] { acceptAll(); }) {}

ScriptedServer::ScriptedServer(std::vector<Reply> replies, const TlsFiles* tls)
    : ScriptedServer(inOrder(std::move(replies)), tls) {}

ScriptedServer::~ScriptedServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        shutdown(listener_, SHUT_RDWR);
        for (const int socket : sockets_) {
            shutdown(socket, SHUT_RDWR);
        }
    }
    acceptor_.join();
    for (std::thread& server : servers_) {
        server.join();
    }
    close(listener_);
}

std::string ScriptedServer::url(const std::string& path) const {
    return (tls_ != nullptr ? "https://" : "http://") + address() + path;
}

std::vector<std::string> ScriptedServer::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedServer::acceptAll() {
    for (;;) {
        const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard lock(mutex_);
        if (stopping_ || socket < 0) {
            close(socket);
            return;
        }
        sockets_.insert(socket);
        servers_.emplace_back([this, socket] { serve(socket); });
    }
}

void ScriptedServer::serve(int socket) {
    blockBrokenPipeSignal();
    {
        ServerConnection connection(socket, tls_.get());
        while (answer(connection)) {
        }
    }
    const std::lock_guard lock(mutex_);
    sockets_.erase(socket);
    close(socket);
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
