#include "platform/linux/xml/LinuxXmlServices.h"

#include "formats/xml/libxml_setup.h"
#include "platform/linux/xml/CurlXmlRequest.h"
#include "platform/linux/xml/LibxmlDocument.h"

namespace intake {

std::unique_ptr<XmlDocument> LinuxXmlServices::createDocument(TextEncoding encoding, XmlSource,
                                                              const EndMark& endMark) {
    setUpLibxml();
    return std::make_unique<LibxmlDocument>(encoding, endMark);
}

std::unique_ptr<XmlRequest> LinuxXmlServices::createRequest(KeptConnections& connections,
                                                            const EndMark& endMark) {
    return std::make_unique<CurlXmlRequest>(static_cast<CurlConnections&>(connections), endMark);
}

}  // namespace intake
