// Any document and path give a script or a refusal, in every mode, and the same one whether the
// rows are written while the document is read or selected in it. The first line is the path, the
// second the key, the third the range; the rest is the document.

#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_rows.h"
#include "formats/json/json_select.h"
#include "pipeline/RowRange.h"
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

/// The script that `write` gives, or why there is none.
template <class Write>
std::string outcomeOf(Write write) {
    try {
        std::string script;
        write(script);
        return script;
    } catch (const std::invalid_argument& refusal) {
        return std::string("refused: ") + refusal.what();
    }
}

std::string outcomeOfDocument(std::string_view text) {
    return outcomeOf([&](std::string& script) {
        const intake::JsonDocument document(terminated(text));
        intake::JsonWalker walker(document, script);
        walker.walk(intake::JsonDocument::ROOT, "T", intake::JsonWalker::Role::MEMBER);
    });
}

std::string outcomeOfSelection(std::string_view text, const Path& path,
                               const intake::RequestRecord& request) {
    return outcomeOf([&](std::string& script) {
        const intake::JsonDocument document(terminated(text));
        intake::JsonRecords(document, request, script).write(selectNodes(document, path));
    });
}

std::string outcomeWhileReading(std::string_view text, const Path& path,
                                const intake::RequestRecord& request) {
    return outcomeOf([&](std::string& script) {
        const intake::RowRange wanted(request, std::numeric_limits<int64_t>::max());
        intake::JsonDocument row;
        intake::JsonRecords records(row, request, script);
        const auto take = [&records] { records.take(intake::JsonDocument::ROOT); };
        records.finish(row.readRows(terminated(text), {path, wanted.first(), wanted.end, take}));
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace intake;
    FuzzInput input(data, size);
    RequestRecord request;
    request.xpath = input.line();
    request.key = input.line();
    const std::string range = input.line();
    request.fromRow = numberAt(range, 0, 0);
    request.numRows = numberAt(range, 1, 1000000);
    request.table = "T";
    const std::string_view text = input.rest();
    const Path path = parsePath(request.xpath);
    outcomeOfDocument(text);
    for (request.targetMode = DATA_TABLE; request.targetMode <= SHARED_MEMORY;
         ++request.targetMode) {
        const std::string outcome = outcomeOfSelection(text, path, request);
        if (leadsStraightDown(path) && outcomeWhileReading(text, path, request) != outcome) {
            std::abort();
        }
    }
    return 0;
}
