// A plain path, which is followed while the document is read, and the same path in brackets, which
// is evaluated in the whole document, give the same script. The first line is the path, the second
// the namespaces, the third the key; the rest is the document. How it is read is up to its length.

#include <cstdlib>
#include <stdexcept>

#include "pipeline/error_reports.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/readers/xml/ServedXml.h"

namespace {

std::string script(const intake::RequestRecord& request, std::string_view text) {
    const intake::EndMark endMark;
    intake::ReaderLogger logger(intake::systemPlatform().clock, intake::systemPlatform().textFiles);
    logger.setLevel(-1);
    intake::ServedXml served{std::string(text)};
    intake::FakeConnections connections;
    std::string script, error;
    try {
        const bool success =
            intake::XMLHandler(logger, served, connections, endMark).Read(request, script, error);
        return success ? script : "failed";
    } catch (const intake::PlatformError&) {
        return "refused";
    } catch (const std::length_error&) {
        return "too deep";
    }
}

/// Whether brackets around it leave it one expression.
bool isBalanced(const std::string& expression) {
    int open = 0;
    for (const char each : expression) {
        open += each == '(' ? 1 : each == ')' ? -1 : 0;
        if (open < 0) {
            return false;
        }
    }
    return open == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    intake::FuzzInput input(data, size);
    intake::RequestRecord request;
    request.filename = "http://feeds.example/";
    request.xpath = input.line();
    request.namespaces = input.line();
    request.key = input.line();
    request.numRows = size / 40 % 2 == 0 ? 2 : 100000;
    request.targetMode = static_cast<int32_t>(size % 5);
    request.targetOutFormat = size / 10 % 2;
    request.encoding = size / 20 % 2 * 2;
    if (!isBalanced(request.xpath) || !isBalanced(request.key)) {
        return 0;
    }
    const std::string plain = script(request, input.rest());
    request.xpath = "(" + request.xpath + ")";
    request.key = "(" + request.key + ")";
    if (plain != script(request, input.rest())) {
        std::abort();
    }
    return 0;
}
