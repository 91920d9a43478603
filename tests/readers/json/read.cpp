#include "tests/readers/json/read.h"
#include "platform/Platform.h"

#include "readers/json/JSONHandler.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/support/expect_carried_out.h"
#include "tests/workbench/cobalt/show.h"

namespace intake {

RequestRecord requestOf(const Query& query) {
    RequestRecord request;
    request.mode = "JSON";
    request.filename = "source.json";
    request.xpath = query.path;
    request.targetMode = query.mode;
    request.key = query.key;
    request.table = query.table;
    request.varsPrefix = query.prefix;
    request.fieldsDelimiter = query.delimiter;
    request.fromRow = query.fromRow;
    request.numRows = query.numRows;
    return request;
}

Outcome read(std::string_view source, const RequestRecord& request) {
    FakePlatform platform;
    platform.files.put(request.filename, std::string(source));
    ReaderLogger logger(platform.clock, systemPlatform().textFiles);
    logger.setLevel(LOG_FATAL);
    FakeHttpClient client;
    JSONHandler handler(logger, platform.files, client, platform.diagnostics);
    Outcome outcome;
    outcome.success = handler.Read(request, outcome.script, outcome.error);
    return outcome;
}

std::string script(std::string_view source, const Query& query) {
    const Outcome outcome = read(source, requestOf(query));
    if (!outcome.success) {
        return "failed: " + outcome.error;
    }
    expectCarriedOut(outcome.script, query.mode);
    return outcome.script;
}

std::string stored(std::string_view source, const Query& query) {
    return cobalt::execute(script(source, query));
}

}  // namespace intake
