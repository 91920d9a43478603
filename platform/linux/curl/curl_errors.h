#pragma once

#include <curl/curl.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/base/com_failures.h"

namespace intake {

/// The error number that messages of HTTP requests show for a failed transfer.
uint32_t toHttpError(CURLcode code);

/// The failure that XML requests report for a failed transfer.
const ComFailure& comFailureOf(CURLcode code);

/// The library's words for a failure, or better ones where they name only what it was about to do.
std::string trueReason(std::string_view reason);

/// Whether a transfer was cut off, rather than refused or never begun.
bool isBrokenTransfer(CURLcode code);

}  // namespace intake
