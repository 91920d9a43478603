#include "tests/readers/html/read.h"

#include <gtest/gtest.h>

#include "pipeline/error_reports.h"
#include "platform/Platform.h"
#include "readers/html/HTMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/expect_carried_out.h"
#include "tests/workbench/cobalt/show.h"

namespace intake {

namespace {

RequestRecord requestOf(const std::string& source, const HtmlQuery& query) {
    RequestRecord request;
    request.mode = "HTML";
    request.filename = source;
    request.sheet = query.selector;
    request.targetMode = query.mode;
    request.key = query.key;
    request.table = query.table;
    request.varsPrefix = query.prefix;
    request.fieldsDelimiter = query.delimiter;
    request.fromRow = query.fromRow;
    request.numRows = query.numRows;
    request.encoding = query.encoding;
    return request;
}

/// The script or error, after carrying the script out.
std::string carriedOut(const std::string& script, int32_t targetMode) {
    if (!script.starts_with("failed: ")) {
        expectCarriedOut(script, targetMode);
    }
    return script;
}

}  // namespace

std::string sourceScript(const std::string& source, const HtmlQuery& query) {
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(-1);
    EndMark endMark;
    const auto connections = systemPlatform().http.keepConnections();
    HTMLHandler handler(logger, systemPlatform().html, *connections, endMark);
    std::string script, error;
    try {
        if (!handler.Read(requestOf(source, query), script, error)) {
            return "failed: " + error;
        }
    } catch (const PlatformError& failure) {
        return "failed: " + comErrorReport(failure);
    }
    EXPECT_EQ(error, "");
    return script;
}

std::string fileScriptAlone(const std::string& page, const HtmlQuery& query) {
    const TempDirectory directory;
    return sourceScript(directory.write("page.html", page), query);
}

std::string fileScript(const std::string& page, const HtmlQuery& query) {
    return carriedOut(fileScriptAlone(page, query), query.mode);
}

std::string stored(const std::string& script) {
    return cobalt::execute(script);
}

}  // namespace intake
