#include "readers/json/JSONHandler.h"

#include <atomic>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_select.h"
#include "pipeline/url.h"
#include "readers/json/JsonRecords.h"
#include "readers/json/JsonWalker.h"

namespace intake {

namespace {

/// Makes URLs unique, so that no cache answers; shared by all instances.
std::atomic<uint32_t> uniqueQuery = 34464;

std::string uniqueUrl(const std::string& url) {
    return url.find('?') == std::string::npos ? url + "?q=" + std::to_string(uniqueQuery++) : url;
}

void writeScript(const JsonDocument& document, const RequestRecord& request, std::string& script) {
    if (request.xpath.empty()) {
        JsonWalker(document, script)
            .walk(JsonDocument::ROOT, request.table, JsonWalker::Role::MEMBER);
        return;
    }
    const auto nodes = selectNodes(document, parsePath(request.xpath));
    JsonRecords(document, nodes, request, script).write();
}

}  // namespace

bool JSONHandler::fetch(const RequestRecord& request, ByteBuffer& text, std::string& error) {
    try {
        return isHttpUrl(request.filename) ? fetchUrl(request, text, error)
                                           : file_.Read(request.filename, text);
    } catch (const std::length_error& tooLarge) {
        error += "Failed to load JSON file from " + request.filename + ".\n" + tooLarge.what();
        return false;
    }
}

bool JSONHandler::fetchUrl(const RequestRecord& request, ByteBuffer& text, std::string& error) {
    if (!http_.Fetch(uniqueUrl(request.filename), request, text)) {
        error += "Failed to load JSON file from " + request.filename + ".\n";
        return false;
    }
    *text.prepare(1) = 0;
    text.commit(1);
    return true;
}

bool JSONHandler::Read(const RequestRecord& request, std::string& script, std::string& error) {
    logger_.Write(LOG_DEBUG, "JSON: " + request.filename);
    ByteBuffer text;
    if (!fetch(request, text, error)) {
        return false;
    }
    try {
        const JsonDocument document(std::move(text));
        writeScript(document, request, script);
        return true;
    } catch (const std::invalid_argument& malformed) {
        error += "Error parsing JSON: " + request.filename + ": " + malformed.what();
        return false;
    }
}

}  // namespace intake
