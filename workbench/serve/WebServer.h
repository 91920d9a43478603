#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "workbench/serve/WebMessage.h"

namespace serve {

/// Takes the answer to a request: once, on any thread.
using Reply = std::function<void(WebResponse)>;

/// What a server does with what it is asked. Called on the server's thread; nothing may block it.
class WebHandler {
public:
    virtual ~WebHandler() = default;

    /// Answers at once or later.
    virtual void handle(const WebRequest& request, Reply reply) = 0;

    /// Why a WebSocket is refused; nothing when it may be opened.
    virtual std::optional<WebResponse> refusesSocket(const WebRequest& request) = 0;

    /// What is sent first on a new WebSocket.
    virtual std::vector<std::string> greeting(const WebRequest& request) = 0;
};

/// HTTP/1.1 and WebSockets on loopback, and on no other address, by a thread of its own.
/// Limits: 64 connections, headers of 16 kB, bodies of 1 MB, 30 seconds for a request.
class WebServer {
public:
    virtual ~WebServer() = default;
    virtual uint16_t port() const = 0;

    /// Begins to answer. The handler lives until the server was stopped.
    virtual void start(WebHandler& handler) = 0;

    /// Answers no more. A Reply that is still held has to go before the server.
    virtual void stop() = 0;

    /// Sends a text to all WebSockets. Any thread. A browser that does not keep up is cut off.
    virtual void publish(std::string text) = 0;
};

/// Listens; port 0 stands for any. Throws std::system_error.
std::unique_ptr<WebServer> listenOnLoopback(uint16_t port);

}  // namespace serve
