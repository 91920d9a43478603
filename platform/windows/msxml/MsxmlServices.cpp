#include "platform/windows/msxml/MsxmlServices.h"

#include "platform/windows/com/com_error.h"
#include "platform/windows/msxml/MsxmlDocument.h"
#include "platform/windows/msxml/MsxmlRequest.h"

namespace intake {

/// A document for a local file may be served from anywhere, also from another process.
ComPointer<IXMLDOMDocument2> MsxmlServices::createForFile() {
    ComPointer<IUnknown> object;
    checkCom(create_(CLSID_DOM_DOCUMENT_60, nullptr, CLSCTX_ALL, IID_IUnknown, object.outAny()));
    checkCom(OleRun(object.get()));
    return object.as<IXMLDOMDocument2>(IID_DOM_DOCUMENT_2);
}

ComPointer<IXMLDOMDocument2> MsxmlServices::createForResponse() {
    ComPointer<IXMLDOMDocument2> document;
    checkCom(create_(CLSID_DOM_DOCUMENT_60, nullptr, CLSCTX_INPROC_SERVER, IID_DOM_DOCUMENT_2,
                     document.outAny()));
    return document;
}

std::unique_ptr<XmlDocument> MsxmlServices::createDocument(TextEncoding encoding, XmlSource source,
                                                           const EndMark&) {
    return std::make_unique<MsxmlDocument>(
        source == XmlSource::LOCAL_FILE ? createForFile() : createForResponse(), encoding);
}

std::unique_ptr<XmlRequest> MsxmlServices::createRequest(KeptConnections&, const EndMark&) {
    ComPointer<IXMLHTTPRequest> request;
    checkCom(create_(CLSID_XML_HTTP_60, nullptr, CLSCTX_INPROC_SERVER, IID_XML_HTTP_REQUEST,
                     request.outAny()));
    return std::make_unique<MsxmlRequest>(std::move(request));
}

}  // namespace intake
