// Any document and path give a script or a refusal, in every mode, and the same one whether the
// rows are written while the document is read or selected in it. The first line is the path, the
// second the key, the rest the document.

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_rows.h"
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

using Path = std::vector<intake::PathStep>;

std::string scriptOfSelection(std::string_view text, const Path& path,
                              const intake::RequestRecord& request) {
    const intake::JsonDocument document(terminated(text));
    std::string script;
    intake::JsonRecords(document, request, script).write(selectNodes(document, path));
    return script;
}

std::string scriptWhileReading(std::string_view text, const Path& path,
                               const intake::RequestRecord& request) {
    intake::JsonDocument row;
    std::string script;
    intake::JsonRecords records(row, request, script);
    const auto take = [&records] { records.take(intake::JsonDocument::ROOT); };
    records.finish(row.readRows(terminated(text), {path, 0, request.numRows, take}));
    return script;
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
    const std::string_view text = input.rest();
    const Path path = parsePath(request.xpath);
    try {
        const JsonDocument document(terminated(text));
        std::string script;
        JsonWalker(document, script).walk(JsonDocument::ROOT, "T", JsonWalker::Role::MEMBER);
        for (request.targetMode = DATA_TABLE; request.targetMode <= SHARED_MEMORY;
             ++request.targetMode) {
            script = scriptOfSelection(text, path, request);
            if (leadsStraightDown(path) && scriptWhileReading(text, path, request) != script) {
                std::abort();
            }
        }
    } catch (const std::invalid_argument&) {
        // refused
    }
    return 0;
}
