#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>

#include "platform/HttpClient.h"
#include "platform/linux/curl/CurlTransfer.h"

namespace intake {

/// One GET request by libcurl. The body is taken as it comes.
class CurlHttpRequest final : public HttpRequest {
public:
    /// `connections` and `endMark` outlive this object.
    CurlHttpRequest(const HttpAddress& address, const std::string& userAgent,
                    CurlConnections& connections, const EndMark& endMark);

    /// False when the library could not supply what a request needs.
    bool isOpen() const { return transfer_.isReady(); }

    bool addHeaders(const std::string& lines) override;
    bool setProxy(const std::string& address, const std::string& bypass) override;
    bool setDirect() override;
    bool setProxyUser(const std::string& user) override;
    bool setProxyPassword(const std::string& password) override;
    bool setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                        const std::string& password) override;
    bool send() override;
    bool status(int& code) override;
    bool offeredSchemes(uint32_t& schemes, HttpTarget& target) override;
    bool available(size_t& bytes) override;
    bool read(char* buffer, size_t capacity, size_t& bytesRead) override;
    uint32_t lastError() const override { return lastError_; }
    std::string lastErrorText() const override { return lastErrorText_; }

private:
    void setOptions(const std::string& userAgent);
    void addHeader(std::string_view line);
    bool fail(uint32_t error, const std::string& text);

    void restart();
    bool drive();
    bool failGivenUp();
    uint32_t transferError() const;
    bool failTransfer();
    bool isProxyRefusal() const;

    static size_t onBody(char* data, size_t size, size_t count, void* self);

    const EndMark& endMark_;
    std::string host_;
    const std::string url_;  // that was asked for first
    CurlList headers_;
    CurlTransfer transfer_;

    std::string received_;  // of the body, not taken yet but for the first `taken_` bytes
    size_t taken_ = 0;
    bool outOfMemory_ = false;

    uint32_t lastError_ = 0;
    std::string lastErrorText_;
};

}  // namespace intake
