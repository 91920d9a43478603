#include "readers/xml/XMLHandler.h"

#include "pipeline/error_reports.h"
#include "pipeline/narrow_text.h"
#include "readers/xml/payload.h"
#include "readers/xml/xml_source.h"

namespace intake {

namespace {

constexpr const char* NOT_INSTANTIATED = "Failed to instantiate an XML DOM.\n";

TextEncoding encodingOf(const RequestRecord& request) {
    return request.encoding == ENCODING_ISO_8859_1 ? TextEncoding::ISO_8859_1 : TextEncoding::UTF8;
}

/// Logs the end of a request, whichever way it ends.
class CleanupTrace {
public:
    explicit CleanupTrace(ReaderLogger& logger) : logger_(logger) {}
    ~CleanupTrace() {
        logger_.Write(LOG_DEBUG, success ? "Cleanup success=1\n" : "Cleanup success=0\n");
    }
    CleanupTrace(const CleanupTrace&) = delete;
    CleanupTrace& operator=(const CleanupTrace&) = delete;

    bool success = false;

private:
    ReaderLogger& logger_;
};

}  // namespace

void XMLHandler::trace(const char* step) {
    logger_.Write(LOG_DEBUG, step);
}

bool XMLHandler::Read(const RequestRecord& request, std::string& script, std::string& error) {
    logger_.Write(LOG_DEBUG, "XML: " + request.filename + "\n");
    CleanupTrace cleanup(logger_);
    cleanup.success = readDocument(request, script, error);
    return cleanup.success;
}

bool XMLHandler::readDocument(const RequestRecord& request, std::string& script,
                              std::string& error) {
    Load load{request, script, error, nullptr, nullptr};
    const bool loaded = isRemote(request.filename) ? loadUrl(load) : loadFile(load);
    if (!loaded || !select(load)) {
        return false;
    }
    load.records->write();
    return true;
}

void XMLHandler::makeRecords(Load& load) {
    load.records = std::make_unique<XmlRecords>(*load.document, load.request, logger_, load.script);
}

bool XMLHandler::loadFile(Load& load) {
    const RequestRecord& request = load.request;
    trace("Before CreateInstance\n");
    try {
        load.document =
            services_.createDocument(encodingOf(request), XmlSource::LOCAL_FILE, endMark_);
    } catch (const PlatformError& failure) {
        load.error += NOT_INSTANTIATED + comErrorReport(failure);
        return false;
    }
    makeRecords(load);
    load.records->takeWhileLoading();
    trace("Before load\n");
    if (load.document->loadFile(request.filename)) {
        return true;
    }
    load.records->forgetRows();
    load.error += "Failed to load DOM from " + request.filename + ".\n" +
                  load.document->parseErrorReason() + "\n";
    return false;
}

bool XMLHandler::loadUrl(Load& load) {
    const bool isToBeConverted = isPayload(load.request);
    trace("Before CreateInstance\n");
    std::unique_ptr<XmlRequest> http;
    try {
        http = services_.createRequest(connections_, endMark_);
        // What is still to be converted must lose no characters on the way.
        load.document = services_.createDocument(
            isToBeConverted ? TextEncoding::UTF8 : encodingOf(load.request), XmlSource::RESPONSE,
            endMark_);
    } catch (const PlatformError& failure) {
        load.error += NOT_INSTANTIATED + comErrorReport(failure);
        return false;
    }
    makeRecords(load);
    if (!isToBeConverted) {
        load.records->takeWhileLoading();
    }
    return fetch(load, *http) && (!isToBeConverted || convertPayload(load));
}

bool XMLHandler::fetch(Load& load, XmlRequest& http) {
    const RequestRecord& request = load.request;
    trace("Before open\n");
    const std::string url = requestUrl(request);
    try {
        http.open(url, request.useAuth ? &request.userName : nullptr,
                  request.useAuth ? &request.password : nullptr);
    } catch (const PlatformError& failure) {
        load.error += "Failed to load DOM from " + url + ".\n" + comErrorReport(failure);
        return false;
    }
    for (const Header& header : requestHeaders(request)) {
        http.setHeader(header.name, header.value);
    }
    http.send();
    http.loadInto(*load.document);  // a body that is no XML leaves the document empty
    return true;
}

bool XMLHandler::convertPayload(Load& load) {
    load.document =
        KDFToXml(*load.document, services_, encodingOf(load.request), endMark_, load.error);
    if (load.document == nullptr) {
        return false;
    }
    makeRecords(load);
    return true;
}

bool XMLHandler::select(Load& load) {
    const RequestRecord& request = load.request;
    trace("Before selectNodes()\n");
    if (load.document->rowsFound()) {
        return true;
    }
    load.document->setSelectionNamespaces(toUtf8(request.namespaces, request.encoding));
    if (load.document->selectNodes(toUtf8(request.xpath, request.encoding))) {
        return true;
    }
    const std::string failure =
        "No node set is fetched: " + load.document->parseErrorReason() + "\n";
    load.error += failure;
    logger_.Write(LOG_ERROR, failure);
    return false;
}

}  // namespace intake
