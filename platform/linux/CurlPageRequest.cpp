#include "platform/linux/CurlPageRequest.h"

#include <new>
#include <string_view>

#include "platform/linux/media_type.h"

namespace intake {

namespace {

// Servers turn away what does not call itself a browser.
constexpr const char* USER_AGENT = "Mozilla/5.0 (compatible; NXR/1.0)";

}  // namespace

CurlPageRequest::CurlPageRequest(const EndMark& endMark, size_t maxBytes)
    : transfer_(endMark), maxBytes_(maxBytes) {
    if (!transfer_.isReady()) {
        throw std::bad_alloc();
    }
    CURL* const transfer = transfer_.handle();
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, USER_AGENT);
    curl_easy_setopt(transfer, CURLOPT_ACCEPT_ENCODING, "");  // whatever libcurl can unpack
    curl_easy_setopt(transfer, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http,https,ftp");
    curl_easy_setopt(transfer, CURLOPT_HEADERFUNCTION, onHeader);
    curl_easy_setopt(transfer, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, onBody);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, this);
}

bool CurlPageRequest::fetch(const std::string& url, std::string& reason) {
    // People write blanks and accents into addresses.
    const CURLUcode parsed = curl_url_set(url_.get(), CURLUPART_URL, url.c_str(), CURLU_URLENCODE);
    if (parsed != CURLUE_OK) {
        reason = std::string("It is not a URL: ") + curl_url_strerror(parsed);
        return false;
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_CURLU, url_.get());
    transfer_.restart();
    if (!transfer_.drive([] { return false; })) {
        reason = "The load was given up";
        return false;
    }
    if (outOfMemory_) {
        throw std::bad_alloc();
    }
    reason = transfer_.result() == CURLE_OK ? "" : transfer_.reason();
    return transfer_.result() == CURLE_OK;
}

std::string CurlPageRequest::charset() const {
    const char* mediaType = nullptr;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_CONTENT_TYPE, &mediaType);
    return charsetOf(mediaType == nullptr ? "" : mediaType);
}

bool CurlPageRequest::take(const char* data, size_t length) {
    isTooLarge_ = length > maxBytes_ - body_.size();
    if (isTooLarge_) {
        return false;
    }
    try {
        body_.append(data, length);
        return true;
    } catch (const std::exception&) {  // nothing may fly through the library
        outOfMemory_ = true;
        return false;
    }
}

/// An empty line ends the header of each response.
size_t CurlPageRequest::onHeader(char* data, size_t size, size_t count, void* self) {
    const std::string_view line(data, size * count);
    if (line.find_first_not_of("\r\n") == std::string_view::npos) {
        static_cast<CurlPageRequest*>(self)->transfer_.stayOnHttps();
    }
    return line.size();
}

/// Taking less than was offered fails the transfer.
size_t CurlPageRequest::onBody(char* data, size_t size, size_t count, void* self) {
    return static_cast<CurlPageRequest*>(self)->take(data, size * count) ? size * count : 0;
}

}  // namespace intake
