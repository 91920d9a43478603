// Any page and selector give a script or a refusal. The first line is the charset that the
// transport names, the second the selector; the rest is the page.

#include "formats/html/page_encoding.h"
#include "pipeline/ReaderLogger.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/linux/html/ParsedPage.h"
#include "readers/html/HTMLHandler.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace intake;

/// Serves one page, from memory.
class FuzzedPages final : public HtmlServices {
public:
    FuzzedPages(std::string charset, std::string page)
        : charset_(std::move(charset)), page_(std::move(page)) {}

    std::unique_ptr<HtmlDocument> open(const std::string&, KeptConnections&, const EndMark& endMark,
                                       std::string&) override {
        return std::make_unique<html::ParsedPage>(
            html::parsePage(html::decodePage(page_, charset_), endMark), endMark);
    }

private:
    const std::string charset_;
    const std::string page_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const std::string charset = input.line();
    RequestRecord request;
    request.sheet = input.line();
    FuzzedPages pages(charset, std::string(input.rest()));
    ReaderLogger logger(systemPlatform().clock, systemPlatform().textFiles);
    logger.setLevel(-1);
    const EndMark endMark;
    FakeConnections connections;
    HTMLHandler handler(logger, pages, connections, endMark);
    request.numRows = 1000;
    for (const TargetMode mode : {DATA_ARRAY, DATA_TABLE}) {
        request.targetMode = mode;
        request.encoding = mode == DATA_TABLE ? 2 : 0;
        std::string script, error;
        try {
            handler.Read(request, script, error);
        } catch (const PlatformError&) {
            // refused
        }
    }
    return 0;
}
