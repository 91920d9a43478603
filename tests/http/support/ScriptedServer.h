#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "tests/http/support/ServerConnection.h"
#include "tests/http/support/TlsServer.h"

namespace intake {

/// What becomes of a connection when its reply was sent.
enum class Then {
    KEEP,   // the next request may come
    CLOSE,  // ended in order
    CUT,    // reset
    STALL,  // nothing more is sent until the client goes
};

struct Reply {
    std::string bytes;
    Then then = Then::KEEP;
};

/// A whole response with a body of known length. `header` is further lines, each with its line end.
Reply reply(const std::string& status, const std::string& body, const std::string& header = "");

/// A server on loopback that answers each request as the test says and remembers the requests. It
/// plays what real servers cannot. A request of more than 64 KB is cut off while it is still being
/// sent. Serves HTTPS when it is given what to prove itself with. Stops with its object.
class ScriptedServer {
public:
    /// Called for every request, one at a time.
    using Responder = std::function<Reply(const std::string& request)>;

    explicit ScriptedServer(Responder responder, std::shared_ptr<TlsServer> tls = nullptr);

    /// Answers with the replies in order; a request after the last one is cut off.
    explicit ScriptedServer(std::vector<Reply> replies, std::shared_ptr<TlsServer> tls = nullptr);

    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    uint16_t port() const { return port_; }

    /// "127.0.0.1:port"
    std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

    std::string url(const std::string& path) const;

    /// The headers of all requests so far, in the order in which they came.
    std::vector<std::string> requests();

    /// How many connections were made to it so far, and how many of them it still has.
    size_t connections();
    size_t openConnections();

private:
    void acceptAll();
    void serve(int socket);
    bool answer(ServerConnection& connection);
    Reply respond(const std::string& request);

    Responder responder_;
    std::shared_ptr<TlsServer> tls_;
    int listener_;
    uint16_t port_;

    std::mutex mutex_;  // of what follows
    std::vector<std::string> requests_;
    size_t connections_ = 0;
    std::set<int> sockets_;
    std::vector<std::thread> servers_;
    bool stopping_ = false;

    std::thread acceptor_;
};

}  // namespace intake
