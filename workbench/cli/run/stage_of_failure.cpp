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

}  // namespace

std::string stageOfFailure(const std::string& explanation) {
    try {
        const Document json = parse(explanation);
        const Node stages = json.find(Document::ROOT, "stages");
        if (stages == Document::NONE) return "";
        for (Node each = Document::firstChild(stages); each != json.behind(stages);
             each = json.behind(each)) {
            if (textOf(json, each, "state") == "failed")
                return textOf(json, each, "stage") + ": " + textOf(json, each, "cause");
        }
        return "the source is there and has nothing";
    } catch (const std::invalid_argument&) {
        return "";
    }
}

}  // namespace workbench
