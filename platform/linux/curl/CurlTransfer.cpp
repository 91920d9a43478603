#include "platform/linux/curl/CurlTransfer.h"

#include <openssl/crypto.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "formats/text/ascii.h"
#include "formats/text/media_type.h"
#include "platform/linux/base/NeutralLocale.h"
#include "platform/linux/curl/curl_errors.h"
#include "platform/linux/curl/time_to_connect.h"
#include "platform/linux/curl/tls_connection.h"

namespace intake {

namespace {

constexpr long FTP_ANSWER_SECONDS = 30;
constexpr long MAX_REDIRECTS = 10;
constexpr int POLL_MILLISECONDS = 100;
constexpr std::chrono::milliseconds LOOK_INTERVAL(POLL_MILLISECONDS);
constexpr long FIRST_FINAL_STATUS = 200;  // those below announce another response
constexpr long SERVER_AUTHENTICATION = 401;
constexpr long PROXY_AUTHENTICATION = 407;

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

CurlTransfer::CurlTransfer(CurlConnections& connections, const EndMark& endMark, Times times)
    : endMark_(endMark), times_(times), connections_(connections), handle_(makeHandle()) {
    if (isReady()) {
        setCommonOptions();
    }
}

CurlTransfer::~CurlTransfer() {
    const bool mayStay = isReady() && mayBeKept();
    if (isReady()) {
        curl_multi_remove_handle(connections_.driver(), handle());
    }
    connections_.endTransfer(mayStay);
}

/// Whether its connections are in a state, and of a kind, in which another load may have them. What
/// FTP keeps is a session of a user, of which servers allow few.
bool CurlTransfer::mayBeKept() {
    noteSchemes();
    return done_ && result_ == CURLE_OK && !isForOneUser_ && !leftover_.hasSeenAny() &&
           (isHttp() || !isUsed_);
}

bool CurlTransfer::isHttp() const {
    const char* scheme = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_SCHEME, &scheme);
    return scheme != nullptr && startsWithIgnoringCase(scheme, "http");
}

/// These prove the user to a connection, not to a request.
void CurlTransfer::noteSchemes() {
    constexpr long SCHEMES = CURLAUTH_NTLM | CURLAUTH_NEGOTIATE;
    long ofServer = 0, ofProxy = 0;
    curl_easy_getinfo(handle(), CURLINFO_HTTPAUTH_AVAIL, &ofServer);
    curl_easy_getinfo(handle(), CURLINFO_PROXYAUTH_AVAIL, &ofProxy);
    isForOneUser_ = isForOneUser_ || ((ofServer | ofProxy) & SCHEMES) != 0;
}

/// The library calls it last when the transfer has ended and still has its connection. It reads no
/// more of a body than was announced; of what came beyond in the same record of TLS, the socket
/// shows nothing.
int CurlTransfer::onProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    auto& transfer = *static_cast<CurlTransfer*>(self);
    transfer.leftover_.look(transfer.handle());
    return 0;
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
    curl_easy_setopt(handle(), CURLOPT_CONNECTTIMEOUT_MS,
                     static_cast<long>(times_.connect.count()));
    curl_easy_setopt(handle(), CURLOPT_SERVER_RESPONSE_TIMEOUT, FTP_ANSWER_SECONDS);
    curl_easy_setopt(handle(), CURLOPT_XFERINFOFUNCTION, onProgress);
    curl_easy_setopt(handle(), CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(handle(), CURLOPT_NOPROGRESS, 0L);
    connections_.beginTransfer(handle());

    curl_easy_setopt(handle(), CURLOPT_PROXY, "");  // nor that of the environment
    curl_easy_setopt(handle(), CURLOPT_NOPROXY, "");
    curl_easy_setopt(handle(), CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(handle(), CURLOPT_PROXY_SSLVERSION,
                     static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    const char* const authorities = std::getenv("SSL_CERT_FILE");
    if (authorities != nullptr && authorities[0] != 0) {
        curl_easy_setopt(handle(), CURLOPT_CAINFO, authorities);
        curl_easy_setopt(handle(), CURLOPT_PROXY_CAINFO, authorities);
    }
}

void CurlTransfer::goThrough(const std::string& proxy) {
    connections_.goThrough(proxy);
    curl_easy_setopt(handle(), CURLOPT_PROXY, proxy.c_str());
}

void CurlTransfer::restart() {
    noteSchemes();
    isUsed_ = true;
    curl_multi_remove_handle(connections_.driver(), handle());
    done_ = false;
    result_ = CURLE_OK;
    reason_[0] = 0;
    respondedAfter_ = NEVER;
    isWithinHeader_ = false;
    beginTimes();
    curl_easy_setopt(handle(), CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    if (curl_multi_add_handle(connections_.driver(), handle()) != CURLM_OK) {
        end(CURLE_FAILED_INIT);
    }
}

void CurlTransfer::step() {
    const NeutralLocale locale;  // names of hosts are in UTF-8
    int running = 0;
    if (curl_multi_perform(connections_.driver(), &running) != CURLM_OK) {
        return end(CURLE_FAILED_INIT);
    }
    int waiting = 0;
    const CURLMsg* const message = curl_multi_info_read(connections_.driver(), &waiting);
    if (message != nullptr && message->msg == CURLMSG_DONE) {
        end(message->data.result);
    }
}

void CurlTransfer::end(CURLcode result) {
    done_ = true;
    result_ = result;
    if (result == CURLE_OUT_OF_MEMORY && !hasResponded()) {  // the library makes no difference
        std::snprintf(reason_.data(), reason_.size(),
                      "The header of the response has a line of more than 100 KB, or there is "
                      "not enough memory");
    }
}

void CurlTransfer::wait() {
    curl_multi_poll(connections_.driver(), nullptr, 0, POLL_MILLISECONDS, nullptr);
}

void CurlTransfer::beginTimes() {
    lastLook_ = lastByte_ = headerStart_ = Clock::now();
    bytes_ = connections_.sockets().bytes();
    headerOf_ = 0;
}

/// The library's own limit of speed counts the bytes of a body only. A connection that is being
/// made has a limit of its own.
void CurlTransfer::endIfLate() {
    const auto now = Clock::now();
    if (now - lastLook_ < std::min<Clock::duration>(LOOK_INTERVAL, times_.silence)) {
        return;
    }
    lastLook_ = now;
    if (isSilent(now)) {
        endLate("Nothing came for %g seconds", times_.silence);
    } else if (isHeaderLate(now)) {
        endLate("The header of the response took more than %g seconds", times_.header);
    }
}

bool CurlTransfer::isSilent(Clock::time_point now) {
    const bool connects = isConnecting();
    const uint64_t bytes = connections_.sockets().bytes();
    if (connects || bytes != bytes_) {
        bytes_ = bytes;
        lastByte_ = now;
        headerStart_ = connects ? now : headerStart_;
    }
    return now - lastByte_ >= times_.silence;
}

/// To the first server, to where a redirect leads (a connection to the former may still stand), or
/// once more to where a kept connection led that turned out to be of no use.
bool CurlTransfer::isConnecting() const {
    const bool isRedirected = respondedAfter_ != NEVER && redirects() > respondedAfter_;
    const curl_off_t time = timeToConnect(handle());
    return time == 0 || (isRedirected && time == connectedBefore_) ||
           connections_.sockets().isReplacing();
}

bool CurlTransfer::isHeaderLate(Clock::time_point now) {
    long status = 0;
    curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &status);
    const bool isComplete = hasResponded() && status >= FIRST_FINAL_STATUS;
    if (!isHttp() || isComplete || headerOf_ != redirects()) {
        headerOf_ = redirects();
        headerStart_ = now;
    }
    return now - headerStart_ >= times_.header;
}

void CurlTransfer::endLate(const char* reason, std::chrono::milliseconds limit) {
    curl_multi_remove_handle(connections_.driver(), handle());
    std::snprintf(reason_.data(), reason_.size(), reason,
                  std::chrono::duration<double>(limit).count());
    end(CURLE_OPERATION_TIMEDOUT);
}

size_t CurlTransfer::onHeader(char* data, size_t size, size_t count, void* self) {
    static_cast<CurlTransfer*>(self)->noteHeader({data, size * count});
    return size * count;
}

/// Takes the lines of every response of a transfer, and those behind the last chunk of a body; of
/// FTP all that the server says.
void CurlTransfer::noteHeader(std::string_view line) {
    if (line.starts_with("HTTP/") && !isBehindBody()) {
        respondedAfter_ = NEVER;
        isWithinHeader_ = true;
    } else if (line.find_first_not_of("\r\n") == std::string_view::npos) {
        respondedAfter_ = redirects();
        curl_easy_getinfo(handle(), CURLINFO_RESPONSE_CODE, &respondedStatus_);
        connectedBefore_ = timeToConnect(handle());
        isWithinHeader_ = false;
        forgetAuthorities(handle());
        stayOnHttps();
    }
}

/// Whether no other response can follow the latest one, of which the header is complete.
bool CurlTransfer::isBehindBody() const {
    return hasResponded() && respondedStatus_ >= FIRST_FINAL_STATUS &&
           respondedStatus_ != SERVER_AUTHENTICATION && respondedStatus_ != PROXY_AUTHENTICATION;
}

/// Lets no further redirect lead to HTTP when the latest response came over HTTPS.
void CurlTransfer::stayOnHttps() {
    const char* scheme = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_SCHEME, &scheme);
    if (scheme != nullptr && equalIgnoringCase(scheme, "https")) {
        curl_easy_setopt(handle(), CURLOPT_REDIR_PROTOCOLS_STR, "https");
    }
}

std::string CurlTransfer::effectiveUrl() const {
    const char* url = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_EFFECTIVE_URL, &url);
    return url == nullptr ? "" : url;
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
    return reason_[0] != 0 ? trueReason(reason_.data()) : curl_easy_strerror(result_);
}

std::string CurlTransfer::charset() const {
    const char* mediaType = nullptr;
    curl_easy_getinfo(handle(), CURLINFO_CONTENT_TYPE, &mediaType);
    return charsetOf(mediaType == nullptr ? "" : mediaType);
}

}  // namespace intake
