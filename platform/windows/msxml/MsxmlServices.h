#pragma once

#include "platform/XmlDocument.h"
#include "platform/windows/com/ComFactory.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/msxml/msxml.h"

namespace intake {

/// Documents and requests by MSXML 6, on threads where COM is initialised. They end early only with
/// their thread.
class MsxmlServices final : public XmlServices {
public:
    explicit MsxmlServices(ComFactory create = CoCreateInstance) : create_(std::move(create)) {}

    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark& endMark) override;
    std::unique_ptr<XmlRequest> createRequest(KeptConnections& connections,
                                              const EndMark& endMark) override;

private:
    ComPointer<IXMLDOMDocument2> createForFile();
    ComPointer<IXMLDOMDocument2> createForResponse();

    const ComFactory create_;
};

}  // namespace intake
