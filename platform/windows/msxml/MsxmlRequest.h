#pragma once

#include "platform/XmlDocument.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/msxml/msxml.h"

namespace intake {

/// A request by XMLHTTP60.
class MsxmlRequest final : public XmlRequest {
public:
    explicit MsxmlRequest(ComPointer<IXMLHTTPRequest> request) : request_(std::move(request)) {}

    void open(const std::string& url, const std::string* user,
              const std::string* password) override;
    void setHeader(const std::string& name, const std::string& value) override;
    void send() override;
    void loadInto(XmlDocument& document) override;

private:
    ComPointer<IXMLHTTPRequest> request_;
};

}  // namespace intake
