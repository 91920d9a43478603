#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace intake::html {

/// Why a page is not read.
class PageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The largest page that is read, as it comes and in UTF-8. Its tree is up to ten times as large.
constexpr size_t MAX_PAGE_MEGABYTES = 100;
constexpr size_t MAX_PAGE_BYTES = MAX_PAGE_MEGABYTES * 1000 * 1000;

[[noreturn]] inline void throwPageTooLarge() {
    throw PageError("The page is larger than " + std::to_string(MAX_PAGE_MEGABYTES) + " MB");
}

inline void checkPageSize(uint64_t bytes) {
    if (bytes > MAX_PAGE_BYTES) {
        throwPageTooLarge();
    }
}

}  // namespace intake::html
