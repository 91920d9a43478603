#pragma once

#include <curl/curl.h>

#include <string>

namespace intake {

/// Throws the PlatformError of an operation that libxml2 refuses, or that is refused on its behalf.
[[noreturn]] void throwXmlError(const std::string& description);

/// Throws the PlatformError of a request that was set up in a way that cannot be sent.
[[noreturn]] void throwInvalidRequest(const std::string& description);

/// Throws the PlatformError of a failed transfer.
[[noreturn]] void throwTransferError(CURLcode code, const std::string& description);

/// Throws the PlatformError of a load that nobody waits for any more, found out by `library`.
[[noreturn]] void throwGivenUp(const char* library);

}  // namespace intake
