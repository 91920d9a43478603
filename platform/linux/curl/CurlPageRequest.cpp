#include "platform/linux/curl/CurlPageRequest.h"

#include <new>

namespace intake {

namespace {

// Servers turn away what does not call itself a browser.
constexpr const char* USER_AGENT = "Mozilla/5.0 (compatible; NXR/1.0)";
constexpr const char* WHATEVER_LIBCURL_UNPACKS = "";

}  // namespace

CurlPageRequest::CurlPageRequest(CurlConnections& connections, const EndMark& endMark,
                                 size_t maxBytes)
    : transfer_(connections, endMark), body_(transfer_, maxBytes, WHATEVER_LIBCURL_UNPACKS) {
    if (!transfer_.isReady()) {
        throw std::bad_alloc();
    }
    CURL* const transfer = transfer_.handle();
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, USER_AGENT);
    curl_easy_setopt(transfer, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http,https,ftp");
}

bool CurlPageRequest::fetch(const std::string& url, std::string& reason) {
    // People write blanks and accents into addresses.
    const CURLUcode parsed = curl_url_set(url_.get(), CURLUPART_URL, url.c_str(), CURLU_URLENCODE);
    if (parsed != CURLUE_OK) {
        reason = std::string("It is not a URL: ") + curl_url_strerror(parsed);
        return false;
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_CURLU, url_.get());
    if (!body_.receive()) {
        reason = "The load was given up";
        return false;
    }
    reason = transfer_.result() == CURLE_OK ? "" : transfer_.reason();
    return transfer_.result() == CURLE_OK;
}

}  // namespace intake
