#pragma once

#include "platform/Diagnostics.h"

namespace intake {

/// Prints a message, printf's way, on the console window (its first 1023 bytes) and on standard
/// output (whole). Does nothing when the process has no standard output. Worker thread.
void printToConsole(Diagnostics& diagnostics, const char* format, ...);

/// Sends "ERROR: <prefix>: <the system's text for the calling thread's last error>" to the
/// debugger's output, at most 1023 bytes; nothing when the system has no text for it.
void reportSystemError(Diagnostics& diagnostics, const char* prefix);

}  // namespace intake
