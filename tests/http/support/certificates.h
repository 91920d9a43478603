#pragma once

#include <string>

#include "tests/support/TempDirectory.h"

namespace intake {

/// The files that a server proves itself with.
struct TlsFiles {
    std::string certificate;
    std::string key;
};

/// A certificate authority that only this test knows; its files go with it.
class CertificateAuthority {
public:
    CertificateAuthority();

    /// The authority's own certificate: what SSL_CERT_FILE has to name for it to be trusted.
    std::string certificate() const { return file("authority.pem"); }

    /// A certificate for a server. `names` is a list as openssl takes it: "IP:127.0.0.1,DNS:a.b".
    TlsFiles issue(const std::string& names = "IP:127.0.0.1,DNS:localhost") const;

private:
    std::string file(const std::string& name) const { return (directory_.path() / name).string(); }

    TempDirectory directory_;
};

}  // namespace intake
