// Any document, expression and namespaces give nodes or a refusal, and a script or a failure. The
// first line is the expression, the second the namespaces, the third the key; the rest is the
// document. How it is read is up to its length.

#include <stdexcept>

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/readers/xml/ServedXml.h"

namespace {

constexpr int32_t ROWS = 3;  // each may cost all the steps that an expression may take

void visit(intake::XmlDocument& document, intake::XmlDocument::Node row) {
    std::string out;
    document.appendName(row, out);
    document.appendText(row, out);
    document.appendMarkup(row, out);
    document.appendKeyText(row, out);
    document.forEachChild(row, [&](intake::XmlDocument::Node child) {
        document.appendName(child, out);
        document.appendText(child, out);
    });
}

void select(const intake::RequestRecord& request, std::string_view text) {
    const intake::EndMark endMark;
    const auto document = intake::systemPlatform().xml.createDocument(
        intake::TextEncoding::ISO_8859_1, intake::XmlSource::LOCAL_FILE, endMark);
    document->loadText(text);
    document->setSelectionNamespaces(request.namespaces);
    document->setKeyExpression(request.key);
    document->selectNodes(request.xpath);
    for (size_t row = 0; row < document->selectedCount() && row < ROWS; ++row) {
        visit(*document, document->selected(row));
    }
}

void read(const intake::RequestRecord& request, std::string_view text) {
    const intake::EndMark endMark;
    intake::ReaderLogger logger(intake::systemPlatform().clock, intake::systemPlatform().textFiles);
    logger.setLevel(-1);
    intake::ServedXml served{std::string(text)};
    std::string script, error;
    intake::FakeConnections connections;
    intake::XMLHandler(logger, served, connections, endMark).Read(request, script, error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    intake::FuzzInput input(data, size);
    intake::RequestRecord request;
    request.filename = "http://feeds.example/";
    request.xpath = input.line();
    request.namespaces = input.line();
    request.key = input.line();
    request.numRows = ROWS;
    request.targetMode = static_cast<int32_t>(size % 5);
    request.sourceInFormat = size / 5 % 2;
    request.targetOutFormat = size / 10 % 2;
    request.encoding = size / 20 % 2 * 2;
    try {
        select(request, input.rest());
        read(request, input.rest());
    } catch (const intake::PlatformError&) {
        // refused
    } catch (const std::length_error&) {
        // nested too deep
    }
    return 0;
}
