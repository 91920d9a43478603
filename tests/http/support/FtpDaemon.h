#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/http/support/ServerProcess.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A vsftpd of our own on loopback, which serves the files that a test writes. Stops with its
/// object.
class FtpDaemon {
public:
    static constexpr const char* USER = "ftp";

    /// Lets in USER, or "anonymous", with `password`; with any one when it is empty. Throws
    /// std::runtime_error when it cannot be started.
    explicit FtpDaemon(const std::string& password = "");

    void write(const std::string& name, const std::string& content) const;

    std::string url(const std::string& path) const;

private:
    std::string configuration() const;
    std::string file(const char* name) const { return (directory_.path() / name).string(); }

    TempDirectory directory_;
    uint16_t port_ = 0;
    std::unique_ptr<ServerProcess> process_;
};

}  // namespace intake
