// Any document, expression and namespaces give nodes or a refusal. The first line is the
// expression, the second the namespaces, the third the key; the rest is the document.

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace intake;
    FuzzInput input(data, size);
    const std::string expression = input.line();
    const std::string namespaces = input.line();
    const std::string key = input.line();
    const auto document = systemPlatform().xml.createDocument(TextEncoding::ISO_8859_1);
    document->loadText(input.rest());
    try {
        document->setSelectionNamespaces(namespaces);
        document->setKeyExpression(key);
        document->selectNodes(expression);
        for (size_t row = 0; row < document->selectedCount() && row < 100; ++row) {
            visit(*document, document->selected(row));
        }
    } catch (const PlatformError&) {
        // refused
    }
    return 0;
}
