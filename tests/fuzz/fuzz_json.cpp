// Any document and path give a script or a refusal, in every mode. The first line is the path, the
// second the key, the rest the document.

#include <stdexcept>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_select.h"
#include "readers/json/JsonRecords.h"
#include "readers/json/JsonWalker.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

intake::ByteBuffer terminated(std::string_view text) {
    intake::ByteBuffer buffer;
    char* const bytes = buffer.prepare(text.size() + 1);
    text.copy(bytes, text.size());
    bytes[text.size()] = 0;
    buffer.commit(text.size() + 1);
    return buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace intake;
    FuzzInput input(data, size);
    RequestRecord request;
    request.xpath = input.line();
    request.key = input.line();
    request.table = "T";
    request.numRows = 1000000;
    try {
        const JsonDocument document(terminated(input.rest()));
        std::string script;
        JsonWalker(document, script).walk(JsonDocument::ROOT, "T", JsonWalker::Role::MEMBER);
        const auto nodes = selectNodes(document, parsePath(request.xpath));
        for (request.targetMode = DATA_TABLE; request.targetMode <= SHARED_MEMORY;
             ++request.targetMode) {
            JsonRecords(document, nodes, request, script).write();
        }
    } catch (const std::invalid_argument&) {
        // refused
    }
    return 0;
}
