#pragma once

#include <functional>
#include <string>
#include <thread>

namespace intake {

/// An HTTP server on loopback that answers one request after the other, each on a connection of its
/// own. It keeps nothing, so that it can be asked a million times. Stops with its object.
class CannedServer {
public:
    /// Gives all that is sent for a path, before the connection is closed.
    using Responses = std::function<std::string(const std::string& path)>;

    explicit CannedServer(Responses responses);
    ~CannedServer();
    CannedServer(const CannedServer&) = delete;
    CannedServer& operator=(const CannedServer&) = delete;

    std::string url(const std::string& path) const;

private:
    void serve();
    void answer(int connection) const;

    const Responses responses_;
    const int listener_;
    std::thread thread_;
};

}  // namespace intake
