#pragma once

#include <curl/curl.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/HttpClient.h"

namespace intake {

/// One GET request by libcurl, driven step by step so that the body is taken as it comes and a set
/// end mark is noticed within a tenth of a second.
class CurlHttpRequest final : public HttpRequest {
public:
    CurlHttpRequest(const HttpAddress& address, const std::string& userAgent,
                    const EndMark& endMark);
    ~CurlHttpRequest() override;

    /// False when the library could not supply what a request needs.
    bool isOpen() const { return transfer_ != nullptr && driver_ != nullptr; }

    bool addHeaders(const std::string& lines) override;
    bool setProxy(const std::string& address, const std::string& bypass) override;
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
    struct TransferDeleter {
        void operator()(CURL* transfer) const { curl_easy_cleanup(transfer); }
    };
    struct DriverDeleter {
        void operator()(CURLM* driver) const { curl_multi_cleanup(driver); }
    };
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    void setOptions(const HttpAddress& address, const std::string& userAgent);
    void addHeader(std::string_view line);
    bool fail(uint32_t error, const std::string& text);

    void restart();
    bool drive();
    uint32_t transferError() const;
    bool failTransfer();
    bool isProxyRefusal() const;

    void noteHeader(std::string_view line);
    void stayOnHttps();
    static size_t onHeader(char* data, size_t size, size_t count, void* self);
    static size_t onBody(char* data, size_t size, size_t count, void* self);

    const EndMark& endMark_;
    std::string host_;
    std::array<char, CURL_ERROR_SIZE> reason_{};
    std::unique_ptr<curl_slist, ListDeleter> headers_;
    std::unique_ptr<CURL, TransferDeleter> transfer_;
    std::unique_ptr<CURLM, DriverDeleter> driver_;

    std::string received_;  // of the body, not taken yet but for the first `taken_` bytes
    size_t taken_ = 0;
    bool responded_ = false;  // the header of the latest response is complete
    bool done_ = true;
    CURLcode result_ = CURLE_OK;

    uint32_t lastError_ = 0;
    std::string lastErrorText_;
};

}  // namespace intake
