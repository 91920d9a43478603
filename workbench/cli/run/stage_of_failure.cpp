#include "workbench/cli/run/stage_of_failure.h"

#include <stdexcept>
#include <utility>

#include "formats/json/JsonDocument.h"

namespace workbench {

namespace {

using Document = intake::JsonDocument;
using Node = Document::Node;

Document parse(const std::string& text) {
    intake::ByteBuffer bytes;
    text.copy(bytes.prepare(text.size() + 1), text.size());
    bytes.commit(text.size());
    *bytes.prepare(1) = 0;
    bytes.commit(1);
    return Document(std::move(bytes));
}

std::string textOf(const Document& json, Node object, const char* name) {
    const Node found = json.find(object, name);
    return found == Document::NONE ? "" : std::string(json.asString(found));
}

bool isSkipped(const Document& json, Node stages, std::string_view name) {
    for (Node each = Document::firstChild(stages); each != json.behind(stages);
         each = json.behind(each))
        if (textOf(json, each, "stage") == name) return textOf(json, each, "state") == "skipped";
    return false;
}

/// Whether it is the stage at which nothing failed and behind which nothing was looked at, as at a
/// query that was not run.
bool stopsAt(const Document& json, Node stages, Node stage) {
    return textOf(json, stage, "stage") == "selection" &&
           textOf(json, stage, "state") == "warning" && isSkipped(json, stages, "key");
}

bool hasRecords(const Document& json) {
    const std::string records = textOf(json, Document::ROOT, "records");
    return !records.empty() && records != "0";
}

}  // namespace

std::string stageOfFailure(const std::string& explanation) {
    try {
        const Document json = parse(explanation);
        const Node stages = json.find(Document::ROOT, "stages");
        if (stages == Document::NONE) return "";
        std::string stop;
        for (Node each = Document::firstChild(stages); each != json.behind(stages);
             each = json.behind(each)) {
            const std::string words =
                textOf(json, each, "stage") + ": " + textOf(json, each, "cause");
            if (textOf(json, each, "state") == "failed") return words;
            if (stopsAt(json, stages, each)) stop = words;
        }
        if (hasRecords(json)) return "";  // it has recovered
        return stop.empty() ? "the source is there and has nothing" : stop;
    } catch (const std::invalid_argument&) {
        return "";
    }
}

}  // namespace workbench
