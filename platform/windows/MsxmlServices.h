#pragma once

#include "platform/XmlDocument.h"

namespace intake {

/// Documents and requests by MSXML 6, on threads where COM is initialised. They end early only with
/// their thread.
class MsxmlServices final : public XmlServices {
public:
    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark& endMark) override;
    std::unique_ptr<XmlRequest> createRequest(const EndMark& endMark) override;
};

}  // namespace intake
