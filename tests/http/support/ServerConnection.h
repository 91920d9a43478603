#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tests/http/support/TlsServer.h"

namespace intake {

/// One connection that a test server accepted, plain or over TLS. Owned and used by the thread that
/// serves it. Every operation returns as soon as the peer has gone.
class ServerConnection {
public:
    /// Over TLS when `tls` is not null; the handshake is made by the first receiveRequest. `socket`
    /// is borrowed.
    ServerConnection(int socket, const TlsServer* tls);

    /// The header of the next request with the empty line that ends it. Empty when none comes, or
    /// one of more than 64 KB.
    std::string receiveRequest();

    void send(std::string_view bytes);

    /// Says the good-bye of TLS, without which a close looks like a cut.
    void sayGoodbye();

    /// Waits until the peer closes the connection.
    void waitForPeer();

    /// Lets the coming close reset the connection instead of ending it in order.
    void resetOnClose();

private:
    int receive(char* buffer, int capacity);

    int socket_;
    std::unique_ptr<TlsConnection> tls_;
    std::string received_;
};

}  // namespace intake
