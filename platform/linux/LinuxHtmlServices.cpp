#include "platform/linux/LinuxHtmlServices.h"

namespace intake {

std::unique_ptr<HtmlDocument> LinuxHtmlServices::open(const std::string&, const EndMark&,
                                                      std::string& reason) {
    reason = "There are no HTML pages on this system yet";
    return nullptr;
}

}  // namespace intake
