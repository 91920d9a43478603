#pragma once

#include "platform/XmlDocument.h"

namespace intake {

/// Documents by libxml2, requests by libcurl. libxml2 is kept from printing on every thread that
/// makes a document.
class LinuxXmlServices final : public XmlServices {
public:
    LinuxXmlServices();

    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark& endMark) override;
    std::unique_ptr<XmlRequest> createRequest(const EndMark& endMark) override;
};

}  // namespace intake
