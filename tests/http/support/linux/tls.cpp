#include "tests/http/support/linux/tls.h"

#include <openssl/ssl.h>

#include <csignal>

namespace intake {

namespace {

/// A client that goes must not end the test.
void blockBrokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

class OpenSslConnection final : public TlsConnection {
public:
    OpenSslConnection(SSL_CTX* server, int socket) : tls_(SSL_new(server)) {
        SSL_set_fd(tls_.get(), socket);
        SSL_set_accept_state(tls_.get());
    }

    int receive(char* buffer, int capacity) override {
        return SSL_read(tls_.get(), buffer, capacity);
    }
    void send(std::string_view bytes) override {
        SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()));
    }
    void sayGoodbye() override { SSL_shutdown(tls_.get()); }

private:
    struct Deleter {
        void operator()(SSL* tls) const { SSL_free(tls); }
    };

    std::unique_ptr<SSL, Deleter> tls_;
};

class OpenSslServer final : public TlsServer {
public:
    explicit OpenSslServer(const TlsFiles& files) : tls_(SSL_CTX_new(TLS_server_method())) {
        SSL_CTX_use_certificate_chain_file(tls_.get(), files.certificate.c_str());
        SSL_CTX_use_PrivateKey_file(tls_.get(), files.key.c_str(), SSL_FILETYPE_PEM);
    }

    void allowNothingLaterThanTls11() {
        SSL_CTX_set_security_level(tls_.get(), 0);
        SSL_CTX_set_min_proto_version(tls_.get(), TLS1_1_VERSION);
        SSL_CTX_set_max_proto_version(tls_.get(), TLS1_1_VERSION);
    }

    std::unique_ptr<TlsConnection> accept(int socket) const override {
        blockBrokenPipeSignal();
        return std::make_unique<OpenSslConnection>(tls_.get(), socket);
    }

private:
    struct Deleter {
        void operator()(SSL_CTX* tls) const { SSL_CTX_free(tls); }
    };

    std::unique_ptr<SSL_CTX, Deleter> tls_;
};

}  // namespace

std::shared_ptr<TlsServer> overTls(const TlsFiles& files) {
    return std::make_shared<OpenSslServer>(files);
}

std::shared_ptr<TlsServer> overOldTls(const TlsFiles& files) {
    auto server = std::make_shared<OpenSslServer>(files);
    server->allowNothingLaterThanTls11();
    return server;
}

}  // namespace intake
