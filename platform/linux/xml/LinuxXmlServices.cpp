#include "platform/linux/xml/LinuxXmlServices.h"

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include "platform/linux/xml/CurlXmlRequest.h"
#include "platform/linux/xml/LibxmlDocument.h"

namespace intake {

namespace {

void ignoreText(void*, const char*, ...) {}
void ignoreError(void*, xmlError*) {}

/// Of this thread only: the host may use the library too.
void keepLibraryQuiet() {
    xmlSetGenericErrorFunc(nullptr, ignoreText);
    xmlSetStructuredErrorFunc(nullptr, ignoreError);
}

}  // namespace

LinuxXmlServices::LinuxXmlServices() {
    xmlInitParser();
}

std::unique_ptr<XmlDocument> LinuxXmlServices::createDocument(TextEncoding encoding, XmlSource,
                                                              const EndMark& endMark) {
    keepLibraryQuiet();
    return std::make_unique<LibxmlDocument>(encoding, endMark);
}

std::unique_ptr<XmlRequest> LinuxXmlServices::createRequest(const EndMark& endMark) {
    return std::make_unique<CurlXmlRequest>(endMark);
}

}  // namespace intake
