#include "readers/json/JSONHandler.h"

#include <stdexcept>

#include "readers/json/JsonDocument.h"
#include "readers/json/JsonRecords.h"
#include "readers/json/JsonWalker.h"
#include "readers/json/json_path.h"
#include "readers/json/json_select.h"

namespace intake {

namespace {

bool isUrl(const std::string& source) {
    return source.find("http://") != std::string::npos ||
           source.find("https://") != std::string::npos;
}

void writeScript(const JsonDocument& document, const RequestRecord& request, std::string& script) {
    if (request.xpath.empty()) {
        JsonWalker(document, script)
            .walk(JsonDocument::ROOT, request.table, JsonWalker::Place::MEMBER);
        return;
    }
    const auto nodes = selectNodes(document, parsePath(request.xpath));
    JsonRecords(document, nodes, request, script).write();
}

}  // namespace

bool JSONHandler::fetch(const std::string& source, std::unique_ptr<char[]>& text, size_t& size,
                        std::string& error) {
    if (isUrl(source)) {
        error += "Failed to load JSON file from " + source + ".\n";
        return false;
    }
    return file_.Read(source, text, size);
}

bool JSONHandler::Read(const RequestRecord& request, std::string& script, std::string& error) {
    logger_.Write(LOG_DEBUG, "JSON: " + request.filename);
    std::unique_ptr<char[]> text;
    size_t size = 0;
    if (!fetch(request.filename, text, size, error)) {
        return false;
    }
    try {
        const JsonDocument document(std::move(text), size);
        writeScript(document, request, script);
        return true;
    } catch (const std::invalid_argument& malformed) {
        error += "Error parsing JSON: " + request.filename + ": " + malformed.what();
        return false;
    }
}

}  // namespace intake
