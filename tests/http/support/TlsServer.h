#pragma once

#include <memory>
#include <string_view>

namespace intake {

/// One connection over TLS. Used like ServerConnection, which owns it.
class TlsConnection {
public:
    virtual ~TlsConnection() = default;

    /// Makes the handshake first. Returns how many bytes came, or 0 and less.
    virtual int receive(char* buffer, int capacity) = 0;
    virtual void send(std::string_view bytes) = 0;

    /// Says the good-bye of TLS, without which a close looks like a cut.
    virtual void sayGoodbye() = 0;
};

/// What a server over TLS proves itself with. Any thread.
class TlsServer {
public:
    virtual ~TlsServer() = default;

    /// Of an accepted socket, which is borrowed.
    virtual std::unique_ptr<TlsConnection> accept(int socket) const = 0;
};

}  // namespace intake
