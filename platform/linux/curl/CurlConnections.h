#pragma once

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <string>

#include "platform/KeptConnections.h"
#include "platform/linux/curl/SocketWatch.h"
#include "platform/linux/curl/curl_handles.h"

namespace intake {

/// Connections that libcurl keeps in what drives its transfers. A connection is used again only
/// where nothing has come over it in between. Of all workers, so many keep some that the process
/// does not run out of descriptors; those of the others are closed with their load.
class CurlConnections final : public KeptConnections {
public:
    CurlConnections() = default;
    ~CurlConnections() override { close(); }
    CurlConnections(const CurlConnections&) = delete;
    CurlConnections& operator=(const CurlConnections&) = delete;

    /// How old a connection may be when it is used again, whether it was idle or not.
    static constexpr std::chrono::seconds MAX_AGE{60};

    /// Of the process. Each of them holds three descriptors, four after a redirect to another
    /// server.
    static constexpr int MOST_KEEPERS = 100;

    /// Sets a new transfer up for them.
    void beginTransfer(CURL* transfer);

    /// What drives the transfer; null when the library could not supply it. Lent until the transfer
    /// ends, or goes through another proxy.
    CURLM* driver();

    /// The transfer goes through this proxy. Whoever the address names is proved to it. Not once
    /// the transfer is being driven.
    void goThrough(const std::string& proxy);

    /// Keeps the connections, or closes them. Nothing is driven any more.
    void endTransfer(bool mayBeKept);

    void close() override;

    const SocketWatch& sockets() const { return sockets_; }

private:
    bool takePlace();

    static std::atomic<int> keepers_;

    SocketWatch sockets_;  // goes after all connections
    CurlMulti driver_;
    std::string proxy_;      // that was gone through last
    bool hasPlace_ = false;  // is one of the keepers
};

}  // namespace intake
