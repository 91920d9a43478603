#include "platform/linux/curl/tls_connection.h"

#include <openssl/ssl.h>

namespace intake {

namespace {

/// Null where there is none.
SSL* connectionOf(CURL* transfer) {
    const curl_tlssessioninfo* info = nullptr;
    curl_easy_getinfo(transfer, CURLINFO_TLS_SSL_PTR, &info);
    const bool isOurs = info != nullptr && info->backend == CURLSSLBACKEND_OPENSSL;
    return isOurs ? static_cast<SSL*>(info->internals) : nullptr;
}

}  // namespace

void LeftoverWatch::look(CURL* transfer) {
    const SSL* const connection = connectionOf(transfer);
    isLeftBehind_ = isLeftBehind_ || (isLeft_ && connection != connection_);
    connection_ = connection;
    isLeft_ = connection != nullptr && SSL_pending(connection) > 0;
}

void forgetAuthorities(CURL* transfer) {
    const SSL* const connection = connectionOf(transfer);
    X509_STORE* const nobody = connection == nullptr ? nullptr : X509_STORE_new();
    if (nobody != nullptr) {
        SSL_CTX_set_cert_store(SSL_get_SSL_CTX(connection), nobody);
    }
}

}  // namespace intake
