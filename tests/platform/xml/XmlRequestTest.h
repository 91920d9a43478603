#pragma once

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/platform/xml/XmlTest.h"

namespace intake {

/// Fetches documents with the system's own services. No proxy of the environment counts.
class XmlRequestTest : public XmlTest {
protected:
    /// Fetches `url` into the document, with the credentials when there are any.
    void fetch(const std::string& url) {
        request_->open(url, user_, password_);
        request_->send();
        request_->loadInto(*document_);
    }

    std::unique_ptr<KeptConnections> connections_ = systemPlatform().http.keepConnections();
    std::unique_ptr<XmlRequest> request_ = services_.createRequest(*connections_, endMark_);
    const std::string* user_ = nullptr;
    const std::string* password_ = nullptr;
};

}  // namespace intake
