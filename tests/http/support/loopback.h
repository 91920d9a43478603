#pragma once

// TCP sockets that stay on this machine. A socket is the system's own handle, which fits an int on
// every system; -1 is none.

#include <cstdint>
#include <string_view>

namespace intake {

/// A socket that listens on `port` or, when that is 0, on a free one. Throws std::system_error.
int listenOnLoopback(uint16_t port);

/// The port that a socket is bound to.
uint16_t portOf(int socket);

/// A port on which nobody listens at the moment. On Linux, where servers are started on it, no
/// other test is given it while this one runs. Throws std::system_error where there is none.
uint16_t freePort();

/// Whether somebody accepts connections on a port of this machine.
bool isListening(uint16_t port);

/// Waits for the next connection.
int acceptConnection(int listener);

/// Waits for bytes and returns how many came: none when the peer has gone or the socket was shut
/// down, less than none when the connection broke.
int receiveBytes(int socket, char* buffer, int capacity);

/// Returns as soon as the peer has gone.
void sendBytes(int socket, std::string_view bytes);

/// Ends the connection in both directions; whoever waits for bytes is woken.
void shutDown(int socket);

/// Lets the coming close reset the connection instead of ending it in order.
void resetOnClose(int socket);

void closeSocket(int socket);

}  // namespace intake
