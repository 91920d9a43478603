#include "readers/xml/XMLHandler.h"

#include "pipeline/error_reports.h"
#include "pipeline/narrow_text.h"
#include "readers/xml/XmlRecords.h"
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
    Document document;
    const bool loaded = isRemote(request.filename) ? loadUrl(request, document, error)
                                                   : loadFile(request, document, error);
    if (!loaded || !select(request, *document, error)) {
        return false;
    }
    XmlRecords(*document, request, logger_, script).write();
    return true;
}

bool XMLHandler::loadFile(const RequestRecord& request, Document& document, std::string& error) {
    trace("Before CreateInstance\n");
    try {
        document = services_.createDocument(encodingOf(request), XmlSource::LOCAL_FILE, endMark_);
    } catch (const PlatformError& failure) {
        error += NOT_INSTANTIATED + comErrorReport(failure);
        return false;
    }
    trace("Before load\n");
    if (document->loadFile(request.filename)) {
        return true;
    }
    error +=
        "Failed to load DOM from " + request.filename + ".\n" + document->parseErrorReason() + "\n";
    return false;
}

bool XMLHandler::loadUrl(const RequestRecord& request, Document& document, std::string& error) {
    trace("Before CreateInstance\n");
    std::unique_ptr<XmlRequest> http;
    try {
        http = services_.createRequest(endMark_);
        // What is still to be converted must lose no characters on the way.
        document =
            services_.createDocument(isPayload(request) ? TextEncoding::UTF8 : encodingOf(request),
                                     XmlSource::RESPONSE, endMark_);
    } catch (const PlatformError& failure) {
        error += NOT_INSTANTIATED + comErrorReport(failure);
        return false;
    }
    return fetch(request, *http, *document, error) && convertPayload(request, document, error);
}

bool XMLHandler::fetch(const RequestRecord& request, XmlRequest& http, XmlDocument& document,
                       std::string& error) {
    trace("Before open\n");
    const std::string url = requestUrl(request);
    try {
        http.open(url, request.useAuth ? &request.userName : nullptr,
                  request.useAuth ? &request.password : nullptr);
    } catch (const PlatformError& failure) {
        error += "Failed to load DOM from " + url + ".\n" + comErrorReport(failure);
        return false;
    }
    for (const Header& header : requestHeaders(request)) {
        http.setHeader(header.name, header.value);
    }
    http.send();
    http.loadInto(document);  // a body that is no XML leaves the document empty
    return true;
}

bool XMLHandler::convertPayload(const RequestRecord& request, Document& document,
                                std::string& error) {
    if (isPayload(request)) {
        document = KDFToXml(*document, services_, encodingOf(request), endMark_, error);
    }
    return document != nullptr;
}

bool XMLHandler::select(const RequestRecord& request, XmlDocument& document, std::string& error) {
    trace("Before selectNodes()\n");
    document.setSelectionNamespaces(toUtf8(request.namespaces, request.encoding));
    if (document.selectNodes(toUtf8(request.xpath, request.encoding))) {
        return true;
    }
    const std::string failure = "No node set is fetched: " + document.parseErrorReason() + "\n";
    error += failure;
    logger_.Write(LOG_ERROR, failure);
    return false;
}

}  // namespace intake
