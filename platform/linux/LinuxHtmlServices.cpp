#include "platform/linux/LinuxHtmlServices.h"

#include "platform/linux/html/ParsedPage.h"
#include "platform/linux/html/page_encoding.h"
#include "platform/linux/html/page_errors.h"
#include "platform/linux/page_source.h"

namespace intake {

std::unique_ptr<HtmlDocument> LinuxHtmlServices::open(const std::string& source,
                                                      const EndMark& endMark, std::string& reason) {
    PageSource page;
    if (!readPageSource(source, endMark, page, reason)) {
        return nullptr;
    }
    std::string text = html::decodePage(std::move(page.bytes), page.charset);
    if (text.size() > html::MAX_PAGE_BYTES) {
        html::throwPageTooLarge();
    }
    return std::make_unique<html::ParsedPage>(html::parsePage(std::move(text), endMark), endMark);
}

}  // namespace intake
