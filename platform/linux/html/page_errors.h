#pragma once

#include <cstddef>
#include <string>

namespace intake::html {

/// The largest page that is read, as it comes and in UTF-8. Its tree is up to ten times as large.
constexpr size_t MAX_PAGE_MEGABYTES = 100;
constexpr size_t MAX_PAGE_BYTES = MAX_PAGE_MEGABYTES * 1000 * 1000;

/// Throws the PlatformError of a page beyond that.
[[noreturn]] void throwPageTooLarge();

/// Throws the PlatformError of a page that is not parsed.
[[noreturn]] void throwPageRefused(const std::string& description);

/// Throws the PlatformError of a page that nobody waits for any more.
[[noreturn]] void throwPageGivenUp();

}  // namespace intake::html
