#pragma once

#include <memory>
#include <string>

#include "platform/linux/CurlTransfer.h"

namespace intake {

/// Fetches a page by libcurl, over HTTP, HTTPS or FTP. For one page.
class CurlPageRequest {
public:
    /// `endMark` outlives this object; a page of more than `maxBytes` is refused.
    CurlPageRequest(const EndMark& endMark, size_t maxBytes);

    /// False, and the reason, when the page cannot be had; a status of 400 and above is such a
    /// reason.
    bool fetch(const std::string& url, std::string& reason);

    /// Whether the page was refused for its size.
    bool isTooLarge() const { return isTooLarge_; }

    /// What was fetched, and the charset that the server names for it; empty when it names none.
    std::string takeBody() { return std::move(body_); }
    std::string charset() const;

private:
    bool take(const char* data, size_t length);
    static size_t onHeader(char* data, size_t size, size_t count, void* self);
    static size_t onBody(char* data, size_t size, size_t count, void* self);

    struct UrlDeleter {
        void operator()(CURLU* url) const { curl_url_cleanup(url); }
    };

    std::unique_ptr<CURLU, UrlDeleter> url_{curl_url()};  // libcurl keeps its address
    CurlTransfer transfer_;
    const size_t maxBytes_;
    std::string body_;
    bool isTooLarge_ = false;
    bool outOfMemory_ = false;
};

}  // namespace intake
