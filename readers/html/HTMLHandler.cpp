#include "readers/html/HTMLHandler.h"

#include "readers/html/HtmlRecords.h"
#include "readers/html/TableSelector.h"

namespace intake {

bool HTMLHandler::Read(const RequestRecord& request, std::string& script, std::string& error) {
    const std::unique_ptr<HtmlDocument> document = open(request, error);
    if (document == nullptr) {
        return false;
    }
    const TableSelector selector(request.sheet, request.encoding);
    const HtmlDocument::Element element = selector.find(*document);
    if (element == nullptr) {
        error += selector.notFoundMessage();
        return false;
    }
    const std::unique_ptr<HtmlTable> table = document->table(element);
    return HtmlRecords(*table, request, script).write(error);
}

std::unique_ptr<HtmlDocument> HTMLHandler::open(const RequestRecord& request, std::string& error) {
    std::string reason;
    std::unique_ptr<HtmlDocument> document =
        services_.open(request.filename, connections_, endMark_, reason);
    if (document == nullptr) {
        error += "HTML: Failed to open URL \"" + request.filename + "\"";
        logger_.Write(LOG_ERROR, "HTML: " + reason + "\n");
    }
    return document;
}

}  // namespace intake
