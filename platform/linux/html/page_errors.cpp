#include "platform/linux/html/page_errors.h"

#include "platform/linux/com_failures.h"

namespace intake::html {

namespace {

constexpr const char* SOURCE = "HTML parser";

}  // namespace

void throwPageRefused(const std::string& description) {
    UNSPECIFIED.raise(SOURCE, description);
}

void throwPageTooLarge() {
    throwPageRefused("The page is larger than " + std::to_string(MAX_PAGE_MEGABYTES) + " MB");
}

void throwPageGivenUp() {
    ABORTED.raise(SOURCE, "The load was given up.");
}

}  // namespace intake::html
