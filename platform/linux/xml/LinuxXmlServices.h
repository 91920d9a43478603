#pragma once

#include "platform/XmlDocument.h"

namespace intake {

/// Documents by libxml2, requests by libcurl.
class LinuxXmlServices final : public XmlServices {
public:
    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark& endMark) override;
    std::unique_ptr<XmlRequest> createRequest(KeptConnections& connections,
                                              const EndMark& endMark) override;
};

}  // namespace intake
