#pragma once

#include <string>

#include "platform/linux/curl/CurlTransfer.h"
#include "platform/linux/curl/ReceivedBody.h"

namespace intake {

/// Fetches a page by libcurl, over HTTP, HTTPS or FTP. For one page.
class CurlPageRequest {
public:
    /// `connections` and `endMark` outlive this object; a page of more than `maxBytes` is refused.
    CurlPageRequest(CurlConnections& connections, const EndMark& endMark, size_t maxBytes);

    /// False, and the reason, when the page cannot be had; a status of 400 and above is such a
    /// reason.
    bool fetch(const std::string& url, std::string& reason);

    /// Whether the page was refused for its size.
    bool isTooLarge() const { return body_.isTooLarge(); }
    bool isBomb() const { return body_.isBomb(); }

    /// What was fetched, and the charset that the server names for it; empty when it names none.
    std::string takeBody() { return std::move(body_.bytes()); }
    std::string charset() const { return transfer_.charset(); }

private:
    CurlUrl url_{curl_url()};  // libcurl keeps its address
    CurlTransfer transfer_;
    ReceivedBody body_;
};

}  // namespace intake
