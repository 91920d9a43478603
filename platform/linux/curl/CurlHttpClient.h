#pragma once

#include <chrono>

#include "platform/HttpClient.h"
#include "platform/linux/curl/CurlConnections.h"

namespace intake {

/// HTTP by libcurl; proxies of the desktop's and the environment's configuration by libproxy.
class CurlHttpClient final : public HttpClient {
public:
    /// For how long the system is asked for a proxy.
    static constexpr std::chrono::seconds PROXY_TIME{30};

    CurlHttpClient(CurlConnections& connections, const EndMark& endMark,
                   std::chrono::milliseconds proxyTime = PROXY_TIME)
        : connections_(connections), endMark_(endMark), proxyTime_(proxyTime) {}

    std::unique_ptr<HttpRequest> open(const HttpAddress& address,
                                      const std::string& userAgent) override;
    uint32_t lastError() const override { return lastError_; }
    std::string lastErrorText() const override { return lastErrorText_; }

    /// Negotiate needs a Kerberos ticket.
    bool canUse(HttpScheme scheme) override;

    bool proxyDetection(bool& autoDetect, std::string& scriptUrl) override;
    bool systemProxy(const std::string& url, std::string& proxy, std::string& bypass) override;
    bool proxyForUrl(const std::string& url, const ProxyLookup& lookup, std::string& proxy,
                     std::string& bypass) override;

private:
    bool fail(uint32_t error, const std::string& text);

    CurlConnections& connections_;
    const EndMark& endMark_;
    const std::chrono::milliseconds proxyTime_;
    uint32_t lastError_ = 0;
    std::string lastErrorText_;
};

class CurlHttpClients final : public HttpClients {
public:
    std::unique_ptr<KeptConnections> keepConnections() override;

    /// `connections` are those of this class.
    std::unique_ptr<HttpClient> create(KeptConnections& connections,
                                       const EndMark& endMark) override;
};

}  // namespace intake
