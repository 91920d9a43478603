#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/certificates.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// An nginx of our own on loopback, which serves the files that a test writes. Stops with its
/// object.
class WebServer {
public:
    /// `locations` goes into the server block of its configuration. Serves HTTPS too when `tls` is
    /// given. Throws std::runtime_error when it cannot be started.
    explicit WebServer(const std::string& locations, const TlsFiles* tls = nullptr);

    void write(const std::string& name, const std::string& content) const;

    /// Gives a file that was written this size, filled with zero bytes.
    void resize(const std::string& name, size_t bytes) const;

    std::string url(const std::string& path) const;
    std::string secureUrl(const std::string& path) const;
    uint16_t port() const { return port_; }

    /// Ends the server, and starts it again on the same ports.
    void stop() { process_.reset(); }
    void start();

private:
    std::string configuration(const std::string& locations, const TlsFiles* tls) const;

    TempDirectory directory_;
    uint16_t port_ = 0;
    uint16_t securePort_ = 0;
    std::unique_ptr<ServerProcess> process_;
};

}  // namespace intake
