#include "readers/json/JSONHandler.h"

#include <atomic>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "formats/json/json_path.h"
#include "formats/json/json_rows.h"
#include "formats/json/json_select.h"
#include "pipeline/RowRange.h"
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

using Path = std::vector<PathStep>;

void writeDocument(ByteBuffer text, const RequestRecord& request, std::string& script) {
    const JsonDocument document(std::move(text));
    JsonWalker(document, script).walk(JsonDocument::ROOT, request.table, JsonWalker::Role::MEMBER);
}

/// Writes each row as soon as it is parsed, so that no other is in memory.
void writeRowsWhileReading(ByteBuffer text, const Path& path, const RequestRecord& request,
                           std::string& script) {
    constexpr int64_t ANY_NUMBER = std::numeric_limits<int64_t>::max();
    const RowRange wanted(request, ANY_NUMBER);
    JsonDocument row;
    JsonRecords records(row, request, script);
    records.finish(row.readRows(std::move(text), {path, wanted.first(), wanted.end, [&records] {
                                                      records.take(JsonDocument::ROOT);
                                                  }}));
}

void writeSelectedRows(ByteBuffer text, const Path& path, const RequestRecord& request,
                       std::string& script) {
    const JsonDocument document(std::move(text));
    JsonRecords(document, request, script).write(selectNodes(document, path));
}

void writeScript(ByteBuffer text, const RequestRecord& request, std::string& script) {
    if (request.xpath.empty()) {
        return writeDocument(std::move(text), request, script);
    }
    const Path path = parsePath(request.xpath);
    if (leadsStraightDown(path)) {
        writeRowsWhileReading(std::move(text), path, request, script);
    } else {
        writeSelectedRows(std::move(text), path, request, script);
    }
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
    const size_t start = script.size();
    try {
        writeScript(std::move(text), request, script);
        return true;
    } catch (const std::invalid_argument& malformed) {
        script.resize(start);  // rows before the place that is wrong are not shown
        error += "Error parsing JSON: " + request.filename + ": " + malformed.what();
        return false;
    }
}

}  // namespace intake
