#include "platform/linux/html/page_errors.h"

#include "platform/PlatformError.h"

namespace intake::html {

namespace {

constexpr const char* SOURCE = "HTML parser";

}  // namespace

void throwPageRefused(const std::string& description) {
    throw PlatformError(0x80004005, "Unspecified error", SOURCE, description);
}

void throwPageTooLarge() {
    throwPageRefused("The page is larger than " + std::to_string(MAX_PAGE_MEGABYTES) + " MB");
}

void throwPageGivenUp() {
    throw PlatformError(0x80004004, "Operation aborted", SOURCE, "The load was given up.");
}

}  // namespace intake::html
