#pragma once

#include "platform/Diagnostics.h"

namespace intake {

/// Sends "ERROR: <prefix>: <the system's text for the calling thread's last error>" to the
/// debugger's output, at most 1023 bytes; nothing when the system has no text for it.
void reportSystemError(Diagnostics& diagnostics, const char* prefix);

}  // namespace intake
