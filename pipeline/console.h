#pragma once

#include "platform/Diagnostics.h"

namespace intake {

/// Prints a message, printf's way, on the console window (its first 1023 bytes) and on standard
/// output (whole). Does nothing when the process has no standard output. Worker thread.
void printToConsole(Diagnostics& diagnostics, const char* format, ...);

}  // namespace intake
