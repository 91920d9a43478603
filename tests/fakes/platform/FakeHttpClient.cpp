#include "tests/fakes/platform/FakeHttpClient.h"

#include <algorithm>

namespace intake {

namespace {

const std::map<HttpScheme, std::string> SCHEME_NAMES{
    {HTTP_NO_SCHEME, "none"}, {HTTP_BASIC, "Basic"},       {HTTP_NEGOTIATE, "Negotiate"},
    {HTTP_NTLM, "NTLM"},      {HTTP_PASSPORT, "Passport"}, {HTTP_DIGEST, "Digest"}};

std::string spaced(const std::string& text) {
    return " " + text;
}

std::string quoted(const std::string& text) {
    return " '" + text + "'";
}

}  // namespace

class FakeHttpClient::Request final : public HttpRequest {
public:
    explicit Request(FakeHttpClient& client) : client_(client) {}
    ~Request() override { passes("close"); }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    bool addHeaders(const std::string& lines) override {
        return passes("addHeaders", quoted(lines));
    }
    bool setProxy(const std::string& address, const std::string& bypass) override {
        return passes("setProxy", quoted(address) + " bypass" + quoted(bypass));
    }
    bool setDirect() override { return passes("setDirect"); }
    bool setProxyUser(const std::string& user) override {
        return passes("setProxyUser", quoted(user));
    }
    bool setProxyPassword(const std::string& password) override {
        return passes("setProxyPassword", quoted(password));
    }
    bool setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                        const std::string& password) override {
        return passes("setCredentials", (target == HttpTarget::SERVER ? " server " : " proxy ") +
                                            SCHEME_NAMES.at(scheme) + quoted(user) +
                                            quoted(password));
    }

    bool send() override {
        response_ = FakeResponse{};
        return passes("send") && client_.takeResponse(response_, lastError_);
    }
    bool status(int& code) override {
        code = response_.status;
        return passes("status");
    }
    bool offeredSchemes(uint32_t& schemes, HttpTarget& target) override {
        schemes = response_.offered;
        target = response_.target;
        return passes("offeredSchemes");
    }
    bool available(size_t& bytes) override {
        bytes = response_.chunks.empty() ? 0 : response_.chunks.front().size();
        bytes += response_.moreAvailable;
        return passes("available");
    }
    bool read(char* buffer, size_t capacity, size_t& bytesRead) override {
        if (!passes("read", spaced(std::to_string(capacity)))) {
            return false;
        }
        std::string& chunk = response_.chunks.front();
        bytesRead = chunk.copy(buffer, std::min(capacity, response_.mostPerRead));
        chunk.erase(0, bytesRead);
        if (chunk.empty()) {
            response_.chunks.erase(response_.chunks.begin());
        }
        return true;
    }

    uint32_t lastError() const override { return lastError_; }
    std::string lastErrorText() const override {
        return "the request's error " + std::to_string(lastError_);
    }

private:
    bool passes(const std::string& operation, const std::string& arguments = "") {
        return client_.passes(operation, arguments, lastError_);
    }

    FakeHttpClient& client_;
    FakeResponse response_;
    uint32_t lastError_ = 0;
};

std::unique_ptr<HttpRequest> FakeHttpClient::open(const HttpAddress& address,
                                                  const std::string& userAgent) {
    const std::string arguments = quoted(address.host) + " port " + std::to_string(address.port) +
                                  (address.secure ? " secure" : "") + " path" +
                                  quoted(address.path) + " agent" + quoted(userAgent);
    return passes("open", arguments, lastError_) ? std::make_unique<Request>(*this) : nullptr;
}

std::string FakeHttpClient::lastErrorText() const {
    return "the client's error " + std::to_string(lastError_);
}

bool FakeHttpClient::canUse(HttpScheme scheme) {
    return passes("canUse", spaced(SCHEME_NAMES.at(scheme)), lastError_) &&
           !forbidden_.contains(scheme);
}

bool FakeHttpClient::proxyDetection(bool& autoDetect, std::string& scriptUrl) {
    if (!passes("proxyDetection", "", lastError_)) {
        return false;
    }
    autoDetect = autoDetect_;
    scriptUrl = scriptUrl_;
    return true;
}

bool FakeHttpClient::systemProxy(const std::string& url, std::string& proxy, std::string& bypass) {
    if (!passes("systemProxy", quoted(url), lastError_)) {
        return false;
    }
    proxy = systemProxy_.address;
    bypass = systemProxy_.bypass;
    return true;
}

bool FakeHttpClient::proxyForUrl(const std::string& url, const ProxyLookup& lookup,
                                 std::string& proxy, std::string& bypass) {
    const std::string arguments =
        quoted(url) + (lookup.detect ? " detect" : "") + " script" + quoted(lookup.scriptUrl);
    if (!passes("proxyForUrl", arguments, lastError_)) {
        return false;
    }
    proxy = proxyForUrl_.address;
    bypass = proxyForUrl_.bypass;
    return true;
}

void FakeHttpClient::fail(const std::string& operation, uint32_t error, int nth, int times) {
    failures_.push_back({operation, error, nth, times});
}

void FakeHttpClient::setDetection(bool autoDetect, const std::string& scriptUrl) {
    autoDetect_ = autoDetect;
    scriptUrl_ = scriptUrl;
}

void FakeHttpClient::setSystemProxy(const std::string& proxy, const std::string& bypass) {
    systemProxy_ = {proxy, bypass};
}

void FakeHttpClient::setProxyForUrl(const std::string& proxy, const std::string& bypass) {
    proxyForUrl_ = {proxy, bypass};
}

/// Notes a call; false when this one is to fail.
bool FakeHttpClient::passes(const std::string& operation, const std::string& arguments,
                            uint32_t& lastError) {
    calls_ += operation + arguments + "\n";
    const int call = ++callCounts_[operation];
    for (const Failure& failure : failures_) {
        if (failure.operation == operation && call >= failure.first &&
            call < failure.first + failure.times) {
            lastError = failure.error;
            return false;
        }
    }
    return true;
}

bool FakeHttpClient::takeResponse(FakeResponse& response, uint32_t& lastError) {
    if (responses_.empty()) {
        lastError = HTTP_ERROR_TIMEOUT;
        return false;
    }
    response = responses_.front();
    responses_.pop_front();
    return true;
}

}  // namespace intake
