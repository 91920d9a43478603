#pragma once

#include <functional>
#include <string>
#include <thread>

namespace intake {

/// An HTTP server on loopback that answers one request after the other, each on a connection of its
/// own. It keeps nothing, so that it can be asked a million times. Stops with its object.
class CannedServer {
public:
    /// Gives the body of a path.
    using Bodies = std::function<std::string(const std::string& path)>;

    explicit CannedServer(Bodies bodies);
    ~CannedServer();
    CannedServer(const CannedServer&) = delete;
    CannedServer& operator=(const CannedServer&) = delete;

    std::string url(const std::string& path) const;

private:
    void serve();
    void answer(int connection) const;

    const Bodies bodies_;
    const int listener_;
    std::thread thread_;
};

}  // namespace intake
