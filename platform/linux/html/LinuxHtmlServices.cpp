#include "platform/linux/html/LinuxHtmlServices.h"

#include "formats/html/PageError.h"
#include "formats/html/page_encoding.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/html/ParsedPage.h"
#include "platform/linux/html/page_source.h"

namespace intake {

namespace {

std::unique_ptr<HtmlDocument> openPage(const std::string& source, CurlConnections& connections,
                                       const EndMark& endMark, std::string& reason) {
    PageSource page;
    if (!readPageSource(source, connections, endMark, page, reason)) {
        return nullptr;
    }
    std::string text = html::decodePage(std::move(page.bytes), page.charset);
    html::checkPageSize(text.size());
    return std::make_unique<html::ParsedPage>(html::parsePage(std::move(text), endMark), endMark);
}

}  // namespace

std::unique_ptr<HtmlDocument> LinuxHtmlServices::open(const std::string& source,
                                                      KeptConnections& connections,
                                                      const EndMark& endMark, std::string& reason) {
    try {
        return openPage(source, static_cast<CurlConnections&>(connections), endMark, reason);
    } catch (const html::PageError& error) {
        UNSPECIFIED.raise(html::PARSER_NAME, error.what());
    } catch (const GivenUp&) {
        raiseGivenUp(html::PARSER_NAME);
    }
}

}  // namespace intake
