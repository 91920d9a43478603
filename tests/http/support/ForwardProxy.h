#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/http/support/ServerProcess.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A tinyproxy of our own on loopback. Stops with its object.
class ForwardProxy {
public:
    /// `settings` are further lines of its configuration. Throws std::runtime_error when it cannot
    /// be started.
    explicit ForwardProxy(const std::string& settings = "");

    std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

    /// Its log so far.
    std::string log() const;

private:
    TempDirectory directory_;
    uint16_t port_ = 0;
    std::unique_ptr<ServerProcess> process_;
};

}  // namespace intake
