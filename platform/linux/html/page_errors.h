#pragma once

#include <string>

namespace intake::html {

/// Throws the PlatformError of a page that is not parsed.
[[noreturn]] void throwPageRefused(const std::string& description);

/// Throws the PlatformError of a page that nobody waits for any more.
[[noreturn]] void throwPageGivenUp();

}  // namespace intake::html
