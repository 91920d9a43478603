#include "platform/linux/curl/CurlTransfer.h"

#include <openssl/crypto.h>
#include <cstdlib>
#include <mutex>

#include "formats/text/ascii.h"
#include "platform/linux/base/NeutralLocale.h"
#include "platform/linux/curl/media_type.h"

namespace intake {

namespace {

constexpr long CONNECT_SECONDS = 60;
constexpr long SILENCE_SECONDS = 30;
constexpr long MAX_REDIRECTS = 10;
constexpr int POLL_MILLISECONDS = 100;

/// OpenSSL would take itself down when the process ends, under workers that may still be inside a
/// transfer.
void initialiseLibraries() {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

CURL* makeHandle() {
    static std::once_flag initialised;
    std::call_once(initialised, initialiseLibraries);
    return curl_easy_init();
}

}  // namespace

CurlTransfer::CurlTransfer(const EndMark& endMark)
    : endMark_(endMark), handle_(makeHandle()), driver_(curl_multi_init()) {
    if (isReady()) {
        setCommonOptions();
    }
}

CurlTransfer::~CurlTransfer() {
    if (isReady()) {
        curl_multi_remove_handle(driver_.get(), handle_.get());
    }
}

void CurlTransfer::setCommonOptions() {
    curl_easy_setopt(handle(), CURLOPT_ERRORBUFFER, reason_.data());
    curl_easy_setopt(handle(), CURLOPT_HEADERFUNCTION, onHeader);
    curl_easy_setopt(handle(), CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle(), CURLOPT_QUICK_EXIT, 1L);  // no waiting for a name server
    curl_easy_setopt(handle(), CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(handle(), CURLOPT_COOKIEFILE, "");  // kept from response to response only
    curl_easy_setopt(handle(), CURLOPT_BUFFERSIZE, static_cast<long>(RECEIVE_BUFFER));

    curl_easy_setopt(handle(), CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(handle(), CURLOPT_MAXREDIRS, MAX_REDIRECTS);
    curl_easy_setopt(handle(), CURLOPT_CONNECTTIMEOUT, CONNECT_SECONDS);
    curl_easy_setopt(handle(), CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(handle(), CURLOPT_LOW_SPEED_TIME, SILENCE_SECONDS);
    curl_easy_setopt(handle(), CURLOPT_SERVER_RESPONSE_TIMEOUT, SILENCE_SECONDS);  // of FTP

    curl_easy_setopt(handle(), CURLOPT_PROXY, "");
    curl_easy_setopt(handle(), CURLOPT_NOPROXY, "");
    if (const char* const authorities = std::getenv("SSL_CERT_FILE")) {
        curl_easy_setopt(handle(), CURLOPT_CAINFO, authorities);
        curl_easy_setopt(handle(), CURLOPT_PROXY_CAINFO, authorities);
    }
}

void CurlTransfer::restart() {
    curl_multi_remove_handle(driver_.get(), handle_.get());
    done_ = false;
    result_ = CURLE_OK;
    reason_[0] = 0;
    respondedAfter_ = NEVER;
    isWithinHeader_ = false;
    curl_easy_setopt(handle(), CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    if (curl_multi_add_handle(driver_.get(), handle_.get()) != CURLM_OK) {
        end(CURLE_FAILED_INIT);
    }
}

void CurlTransfer::step() {
    const NeutralLocale locale;  // names of hosts are in UTF-8
    int running = 0;
    if (curl_multi_perform(driver_.get(), &running) != CURLM_OK) {
        return end(CURLE_FAILED_INIT);
    }
    int waiting = 0;
    const CURLMsg* const message = curl_multi_info_read(driver_.get(), &waiting);
    if (message != nullptr && message->msg == CURLMSG_DONE) {
        end(message->data.result);
    }
}

void CurlTransfer::end(CURLcode result) {
    done_ = true;
    result_ = result;
}

void CurlTransfer::wait() {
    curl_multi_poll(driver_.get(), nullptr, 0, POLL_MILLISECONDS, nullptr);
}

size_t CurlTransfer::onHeader(char* data, size_t size, size_t count, void* self) {
    static_cast<CurlTransfer*>(self)->noteHeader({data, size * count});
    return size * count;
}

/// Takes the lines of every response of a transfer, and those behind the last chunk of a body; of
/// FTP all that the server says.
void CurlTransfer::noteHeader(std::string_view line) {
    if (line.starts_with("HTTP/")) {
        respondedAfter_ = NEVER;
        isWithinHeader_ = true;
    } else if (line.find_first_not_of("\r\n") == std::string_view::npos) {
        respondedAfter_ = redirects();
        isWithinHeader_ = false;
        stayOnHttps();
    }
}

/// Lets no further redirect lead to HTTP when the latest response came over HTTPS.
void CurlTransfer::stayOnHttps() {
    const char* scheme = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_SCHEME, &scheme);
    if (scheme != nullptr && equalIgnoringCase(scheme, "https")) {
        curl_easy_setopt(handle(), CURLOPT_REDIR_PROTOCOLS_STR, "https");
    }
}

long CurlTransfer::redirects() const {
    long count = 0;
    curl_easy_getinfo(handle(), CURLINFO_REDIRECT_COUNT, &count);
    return count;
}

bool CurlTransfer::refusedRedirect() const {
    return result_ == CURLE_UNSUPPORTED_PROTOCOL && redirects() > 0;
}

std::string CurlTransfer::reason() const {
    return reason_[0] != 0 ? reason_.data() : curl_easy_strerror(result_);
}

std::string CurlTransfer::charset() const {
    const char* mediaType = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_CONTENT_TYPE, &mediaType);
    return charsetOf(mediaType == nullptr ? "" : mediaType);
}

}  // namespace intake
