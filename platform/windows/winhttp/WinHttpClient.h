#pragma once

#include "platform/HttpClient.h"
#include "platform/windows/winhttp/WinHttpError.h"
#include "platform/windows/winhttp/WinHttpHandle.h"

namespace intake {

/// HTTP by WinHTTP, with the system's own time-outs. A transfer ends early only with its thread.
class WinHttpClient final : public HttpClient {
public:
    std::unique_ptr<HttpRequest> open(const HttpAddress& address,
                                      const std::string& userAgent) override;
    uint32_t lastError() const override { return error_.number(); }
    std::string lastErrorText() const override { return error_.text(); }

    /// The system itself holds the user's tickets.
    bool canUse(HttpScheme) override { return true; }

    bool proxyDetection(bool& autoDetect, std::string& scriptUrl) override;
    bool systemProxy(const std::string& url, std::string& proxy, std::string& bypass) override;
    bool proxyForUrl(const std::string& url, const ProxyLookup& lookup, std::string& proxy,
                     std::string& bypass) override;

private:
    HINTERNET session_ = nullptr;  // of the request that was opened last, which owns it
    WinHttpError error_;
};

class WinHttpClients final : public HttpClients {
public:
    std::unique_ptr<KeptConnections> keepConnections() override;
    std::unique_ptr<HttpClient> create(KeptConnections& connections,
                                       const EndMark& endMark) override;
};

}  // namespace intake
