#pragma once

#include <openssl/types.h>

#include <optional>
#include <string>
#include <vector>

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/linux/Transfer.h"

namespace probe {

/// Looks on while libcurl verifies the certificates of a transfer's servers. Outlives the transfer;
/// libcurl keeps its address.
class CertificateWatch {
public:
    CertificateWatch() = default;
    CertificateWatch(const CertificateWatch&) = delete;
    CertificateWatch& operator=(const CertificateWatch&) = delete;

    void watch(Transfer& transfer);

    /// Of the latest server; none when no secure connection was begun.
    const std::optional<Certificate>& certificate() const { return certificate_; }

    /// What is wrong with the latest server, whose certificate libcurl refused.
    FetchFailure failure() const;

private:
    static CURLcode onContext(CURL*, void* context, void* self);
    static int onVerify(X509_STORE_CTX* verification, void* self);
    void note(X509_STORE_CTX* verification);

    std::optional<Certificate> certificate_;
    std::string names_;           // for which it is made out: "a.example, b.example"
    int fault_ = 0;               // of OpenSSL
    bool isOfAuthority_ = false;  // the fault is in a certificate above the server's
    Certificate faulty_;
};

}  // namespace probe
