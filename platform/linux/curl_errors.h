#pragma once

#include <curl/curl.h>

#include <cstdint>

namespace intake {

/// The error number that messages show for a failed transfer.
uint32_t toHttpError(CURLcode code);

/// Whether a transfer was cut off, rather than refused or never begun.
bool isBrokenTransfer(CURLcode code);

}  // namespace intake
