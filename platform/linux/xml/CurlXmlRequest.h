#pragma once

#include <string>
#include <vector>

#include "platform/XmlDocument.h"
#include "platform/linux/curl/CurlTransfer.h"
#include "platform/linux/curl/ReceivedBody.h"

namespace intake {

/// A request for an XML document by libcurl. The whole body is kept in memory.
class CurlXmlRequest final : public XmlRequest {
public:
    static constexpr size_t MAX_BODY = 0x7FFFFFFF;  // no larger document is parsed

    /// Both outlive this object. A larger body than `maxBytes` is refused. Throws PlatformError
    /// when libcurl cannot be set up.
    CurlXmlRequest(CurlConnections& connections, const EndMark& endMark,
                   size_t maxBytes = MAX_BODY);

    void open(const std::string& url, const std::string* user,
              const std::string* password) override;

    /// White space around the name and the value does not count. The values of one name are joined
    /// by commas.
    void setHeader(const std::string& name, const std::string& value) override;

    void send() override;

    /// `document` is one of LinuxXmlServices.
    void loadInto(XmlDocument& document) override;

private:
    struct Header {
        std::string name, value;
    };

    void setCredentials(const std::string* user, const std::string* password);
    bool mustAnswerElsewhere() const;
    void failUnlessComplete() const;
    uint64_t mostNodes() const;

    std::string url_;  // that was asked for first
    bool hasUser_ = false;
    CurlTransfer transfer_;
    ReceivedBody body_;
    std::vector<Header> headers_;
};

}  // namespace intake
