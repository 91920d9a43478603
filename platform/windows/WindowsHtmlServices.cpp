#include "platform/windows/WindowsHtmlServices.h"

#include "platform/PlatformError.h"

namespace intake {

std::unique_ptr<HtmlDocument> WindowsHtmlServices::open(const std::string&, const EndMark&,
                                                        std::string&) {
    throw PlatformError(0x80040154, "Class not registered", "Intake",
                        "There are no HTML pages on this system yet");
}

}  // namespace intake
