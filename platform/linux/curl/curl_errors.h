#pragma once

#include <curl/curl.h>

#include <cstdint>

#include "platform/linux/base/com_failures.h"

namespace intake {

/// The error number that messages of HTTP requests show for a failed transfer.
uint32_t toHttpError(CURLcode code);

/// The failure that XML requests report for a failed transfer.
const ComFailure& comFailureOf(CURLcode code);

/// Whether a transfer was cut off, rather than refused or never begun.
bool isBrokenTransfer(CURLcode code);

}  // namespace intake
