#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/HttpClient.h"

namespace intake {

/// What a server or a proxy answers.
struct FakeResponse {
    int status = 200;
    uint32_t offered = HTTP_NO_SCHEME;
    HttpTarget target = HttpTarget::SERVER;
    std::vector<std::string> chunks{};  // of the body; each comes when the one before was read
    size_t mostPerRead = SIZE_MAX;      // fewer bytes are read at once than are available
    size_t moreAvailable = 0;           // said to be there behind each chunk
};

/// An HTTP client that follows a script and notes every call of its own and its requests as one
/// line. It outlives its requests. One thread.
class FakeHttpClient final : public HttpClient {
public:
    std::unique_ptr<HttpRequest> open(const HttpAddress& address,
                                      const std::string& userAgent) override;
    uint32_t lastError() const override { return lastError_; }
    std::string lastErrorText() const override;
    bool canUse(HttpScheme scheme) override;
    bool proxyDetection(bool& autoDetect, std::string& scriptUrl) override;
    bool systemProxy(const std::string& url, std::string& proxy, std::string& bypass) override;
    bool proxyForUrl(const std::string& url, const ProxyLookup& lookup, std::string& proxy,
                     std::string& bypass) override;

    /// Adds a response. Every send that does not fail takes the next; behind the last it times out.
    void respond(const FakeResponse& response) { responses_.push_back(response); }

    /// Lets `times` calls of an operation fail, the first of them its `nth`.
    void fail(const std::string& operation, uint32_t error, int nth = 1, int times = 1);

    void forbid(HttpScheme scheme) { forbidden_.insert(scheme); }
    void setDetection(bool autoDetect, const std::string& scriptUrl);
    void setSystemProxy(const std::string& proxy, const std::string& bypass);
    void setProxyForUrl(const std::string& proxy, const std::string& bypass);

    /// One line per call, oldest first; "close" is the end of a request.
    const std::string& calls() const { return calls_; }

private:
    class Request;
    struct Failure {
        std::string operation;
        uint32_t error;
        int first;
        int times;
    };
    struct Proxy {
        std::string address;
        std::string bypass;
    };

    bool passes(const std::string& operation, const std::string& arguments, uint32_t& lastError);
    bool takeResponse(FakeResponse& response, uint32_t& lastError);

    std::string calls_;
    std::map<std::string, int> callCounts_;
    std::vector<Failure> failures_;
    std::deque<FakeResponse> responses_;
    std::set<HttpScheme> forbidden_;
    bool autoDetect_ = false;
    std::string scriptUrl_;
    Proxy systemProxy_;
    Proxy proxyForUrl_;
    uint32_t lastError_ = 0;
};

}  // namespace intake
