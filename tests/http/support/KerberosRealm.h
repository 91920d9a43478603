#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ServerProcess.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A Kerberos realm of our own on loopback with a user, "designer", and a web service,
/// "HTTP/localhost". While it lives, this process and its children belong to it. Stops with its
/// object.
class KerberosRealm {
public:
    /// Throws std::runtime_error when a tool is missing or fails.
    KerberosRealm();

    /// Lets the user log on: from then on there is a ticket, in the file that KRB5CCNAME names.
    void logOn() const;

    /// Who proved with this Negotiate token, in base64, that they may use the web service. Throws
    /// std::runtime_error when the token proves nothing.
    std::string clientOf(const std::string& token) const;

private:
    std::string file(const std::string& name) const { return (directory_.path() / name).string(); }
    void writeConfiguration() const;
    void makePrincipals() const;

    TempDirectory directory_;
    uint16_t port_ = 0;
    EnvironmentVariable clients_{"KRB5_CONFIG", file("krb5.conf")};
    EnvironmentVariable controller_{"KRB5_KDC_PROFILE", file("kdc.conf")};
    EnvironmentVariable tickets_{"KRB5CCNAME", "FILE:" + file("tickets")};
    EnvironmentVariable keys_{"KRB5_KTNAME", "FILE:" + file("service.keytab")};
    EnvironmentVariable replays_{"KRB5RCACHENAME", "none:"};  // else a file in /var/tmp
    std::unique_ptr<ServerProcess> process_;
};

}  // namespace intake
