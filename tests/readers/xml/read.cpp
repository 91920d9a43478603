#include "tests/readers/xml/read.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "pipeline/error_reports.h"
#include "platform/Platform.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/readers/xml/ServedXml.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/expect_carried_out.h"
#include "tests/workbench/cobalt/show.h"

namespace intake {

namespace {

RequestRecord requestOf(const std::string& source, const XmlQuery& query) {
    RequestRecord request;
    request.mode = "XML";
    request.filename = source;
    request.xpath = query.xpath;
    request.targetMode = query.mode;
    request.key = query.key;
    request.table = query.table;
    request.namespaces = query.namespaces;
    request.varsPrefix = query.prefix;
    request.fieldsDelimiter = query.delimiter;
    request.fromRow = query.fromRow;
    request.numRows = query.numRows;
    request.encoding = query.encoding;
    request.targetOutFormat = query.markup ? 1 : 0;
    request.sourceInFormat = query.payload ? 1 : 0;
    return request;
}

std::string read(XmlServices& services, const RequestRecord& request) {
    const AsWorker worker;
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(-1);
    EndMark endMark;
    const auto connections = systemPlatform().http.keepConnections();
    XMLHandler handler(logger, services, *connections, endMark);
    std::string script, error;
    try {
        if (!handler.Read(request, script, error)) {
            return "failed: " + error;
        }
    } catch (const PlatformError& failure) {
        return "failed: " + comErrorReport(failure);
    } catch (const std::length_error& failure) {
        return std::string("failed: ") + failure.what();
    }
    EXPECT_EQ(error, "");
    return script;
}

/// The script or error, after carrying the script out.
std::string carriedOut(const std::string& script, int32_t targetMode) {
    if (!script.starts_with("failed: ")) {
        expectCarriedOut(script, targetMode);
    }
    return script;
}

}  // namespace

std::string scriptOf(const std::string& path, const XmlQuery& query) {
    return read(systemPlatform().xml, requestOf(path, query));
}

std::string fileScriptAlone(const std::string& source, const XmlQuery& query) {
    const TempDirectory directory;
    return scriptOf(directory.write("source.xml", source), query);
}

std::string fileScript(const std::string& source, const XmlQuery& query) {
    return carriedOut(fileScriptAlone(source, query), query.mode);
}

std::string urlScript(const std::string& body, const XmlQuery& query) {
    ServedXml served(body);
    return carriedOut(read(served, requestOf("http://feeds.example/source.xml", query)),
                      query.mode);
}

std::string stored(const std::string& script) {
    return cobalt::execute(script);
}

}  // namespace intake
