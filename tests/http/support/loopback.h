#pragma once

#include <cstdint>

namespace intake {

/// A socket that listens on this machine only, on `port` or, when that is 0, on a free one. Throws
/// std::system_error.
int listenOnLoopback(uint16_t port);

/// The port that a socket is bound to.
uint16_t portOf(int socket);

/// A port on which nobody listens at the moment.
uint16_t freePort();

/// Whether somebody accepts connections on a port of this machine.
bool isListening(uint16_t port);

}  // namespace intake
