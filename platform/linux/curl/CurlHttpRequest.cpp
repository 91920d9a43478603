#include "platform/linux/curl/CurlHttpRequest.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>

#include "formats/text/ascii.h"
#include "platform/linux/curl/curl_errors.h"
#include "platform/linux/curl/origin.h"

namespace intake {

namespace {

constexpr long PROXY_PORT = 80;  // of an address without one
constexpr long PROXY_AUTHENTICATION = 407;
constexpr std::string_view LINE_ENDS = "\r\n";

struct SchemeBit {
    HttpScheme scheme;
    unsigned long curl;
};
constexpr std::array<SchemeBit, 4> SCHEMES{{
    {HTTP_BASIC, CURLAUTH_BASIC},
    {HTTP_DIGEST, CURLAUTH_DIGEST},
    {HTTP_NTLM, CURLAUTH_NTLM},
    {HTTP_NEGOTIATE, CURLAUTH_NEGOTIATE},
}};

uint32_t toSchemes(long curlSchemes) {
    uint32_t schemes = HTTP_NO_SCHEME;
    for (const SchemeBit& each : SCHEMES) {
        schemes |= (static_cast<unsigned long>(curlSchemes) & each.curl) != 0 ? each.scheme : 0U;
    }
    return schemes;
}

unsigned long toCurl(HttpScheme scheme) {
    const auto found = std::find_if(SCHEMES.begin(), SCHEMES.end(),
                                    [&](const SchemeBit& each) { return each.scheme == scheme; });
    return found == SCHEMES.end() ? CURLAUTH_NONE : found->curl;
}

bool isUnsafeInUrl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte <= ' ' || byte >= 0x7F || std::strchr("\"<>\\^`{|}", character) != nullptr;
}

/// The path with those bytes escaped that may not stand in a URL; what is escaped stays.
std::string escapePath(std::string_view path) {
    constexpr std::string_view HEX = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : path) {
        if (isUnsafeInUrl(character)) {
            const auto byte = static_cast<unsigned char>(character);
            escaped += {'%', HEX[byte >> 4U], HEX[byte & 0xFU]};
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string toUrl(const HttpAddress& address) {
    return (address.secure ? "https://" : "http://") + address.host + ":" +
           std::to_string(address.port) + escapePath(address.path);
}

/// Whether two header lines have the same name.
bool isSameHeader(std::string_view line, std::string_view other) {
    return startsWithIgnoringCase(other, line.substr(0, line.find(':') + 1));
}

}  // namespace

CurlHttpRequest::CurlHttpRequest(const HttpAddress& address, const std::string& userAgent,
                                 CurlConnections& connections, const EndMark& endMark)
    : endMark_(endMark),
      host_(address.host),
      url_(toUrl(address)),
      transfer_(connections, endMark) {
    if (isOpen()) {
        setOptions(userAgent);
        addHeader("Accept:");  // none is sent
    }
}

void CurlHttpRequest::setOptions(const std::string& userAgent) {
    CURL* const transfer = transfer_.handle();
    curl_easy_setopt(transfer, CURLOPT_URL, url_.c_str());
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, userAgent.c_str());
    // Nothing is proved before it is asked for. Without any user the library would keep what the
    // first response offers, take the next offer for a repetition, and prove the same once more.
    curl_easy_setopt(transfer, CURLOPT_USERNAME, "");
    curl_easy_setopt(transfer, CURLOPT_HTTPAUTH, CURLAUTH_NONE);
    curl_easy_setopt(transfer, CURLOPT_PROXYAUTH, CURLAUTH_NONE);

    curl_easy_setopt(transfer, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, onBody);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, this);
}

bool CurlHttpRequest::fail(uint32_t error, const std::string& text) {
    lastError_ = error;
    lastErrorText_ = text;
    return false;
}

bool CurlHttpRequest::addHeaders(const std::string& lines) {
    for (size_t start = 0; start < lines.size();) {
        const size_t end = std::min(lines.find_first_of(LINE_ENDS, start), lines.size());
        const std::string_view line = std::string_view(lines).substr(start, end - start);
        if (!line.empty() && line.find(':') == std::string_view::npos) {
            return fail(HTTP_ERROR_INVALID_PARAMETER,
                        "A header line without a colon: " + std::string(line));
        }
        if (!line.empty()) {
            addHeader(line);
        }
        start = end + 1;
    }
    return true;
}

/// A header that is on the list already is replaced.
void CurlHttpRequest::addHeader(std::string_view line) {
    curl_slist* list = nullptr;
    for (const curl_slist* each = headers_.get(); each != nullptr; each = each->next) {
        if (!isSameHeader(line, each->data)) {
            list = curl_slist_append(list, each->data);
        }
    }
    list = curl_slist_append(list, std::string(line).c_str());
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPHEADER, list);
    headers_.reset(list);
}

bool CurlHttpRequest::setProxy(const std::string& address, const std::string& bypass) {
    if (address.empty()) {
        return fail(HTTP_ERROR_INVALID_PARAMETER, "The proxy has no address");
    }
    const bool isLocal = host_.find('.') == std::string::npos;
    const std::string exceptions = bypass != "<local>" ? bypass : isLocal ? host_ : "";
    transfer_.goThrough(address);
    curl_easy_setopt(transfer_.handle(), CURLOPT_PROXYPORT, PROXY_PORT);
    curl_easy_setopt(transfer_.handle(), CURLOPT_NOPROXY, exceptions.c_str());
    return true;
}

bool CurlHttpRequest::setDirect() {
    transfer_.goThrough("");
    return true;
}

bool CurlHttpRequest::setProxyUser(const std::string& user) {
    curl_easy_setopt(transfer_.handle(), CURLOPT_PROXYUSERNAME, user.c_str());
    return true;
}

bool CurlHttpRequest::setProxyPassword(const std::string& password) {
    curl_easy_setopt(transfer_.handle(), CURLOPT_PROXYPASSWORD, password.c_str());
    return true;
}

bool CurlHttpRequest::setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                                     const std::string& password) {
    CURL* const transfer = transfer_.handle();
    const bool server = target == HttpTarget::SERVER;
    if (server && transfer_.redirects() > 0) {  // the one who asks is the one to be answered
        curl_easy_setopt(transfer, CURLOPT_URL, transfer_.effectiveUrl().c_str());
    }
    curl_easy_setopt(transfer, server ? CURLOPT_USERNAME : CURLOPT_PROXYUSERNAME, user.c_str());
    curl_easy_setopt(transfer, server ? CURLOPT_PASSWORD : CURLOPT_PROXYPASSWORD, password.c_str());
    curl_easy_setopt(transfer, server ? CURLOPT_HTTPAUTH : CURLOPT_PROXYAUTH, toCurl(scheme));
    return true;
}

size_t CurlHttpRequest::onBody(char* data, size_t size, size_t count, void* self) {
    auto& request = *static_cast<CurlHttpRequest*>(self);
    try {
        request.received_.append(data, size * count);
        return size * count;
    } catch (const std::exception&) {  // nothing may fly through the library
        request.outOfMemory_ = true;
        return 0;
    }
}

void CurlHttpRequest::restart() {
    received_.clear();
    taken_ = 0;
    outOfMemory_ = false;
    transfer_.restart();
}

/// Runs the transfer until some of the body has come or it has ended. False when it was given up.
bool CurlHttpRequest::drive() {
    const bool driven = transfer_.drive([this] { return !received_.empty(); });
    if (outOfMemory_) {
        throw std::bad_alloc();
    }
    return driven || failGivenUp();
}

bool CurlHttpRequest::failGivenUp() {
    return fail(HTTP_ERROR_OPERATION_CANCELLED, "The load was given up");
}

/// A protocol that is not supported is that of a redirect, or what answered does not speak HTTP.
uint32_t CurlHttpRequest::transferError() const {
    return transfer_.refusedRedirect() ? HTTP_ERROR_REDIRECT_FAILED
                                       : toHttpError(transfer_.result());
}

bool CurlHttpRequest::failTransfer() {
    return fail(transferError(), transfer_.reason());
}

/// A proxy that refuses to open a tunnel ends the transfer, but is a response like others.
bool CurlHttpRequest::isProxyRefusal() const {
    long code = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_HTTP_CONNECTCODE, &code);
    return code >= 300;
}

bool CurlHttpRequest::send() {
    restart();
    if (!drive()) {
        return false;
    }
    if (isProxyRefusal()) {
        return true;
    }
    if (transfer_.result() == CURLE_OK) {
        return transfer_.hasResponded() ||
               fail(HTTP_ERROR_CONNECTION_BROKEN,
                    "The connection was closed within the header of the response");
    }
    // A response that breaks off behind its header is found out when the body is read.
    return (transfer_.hasResponded() && isBrokenTransfer(transfer_.result())) || failTransfer();
}

bool CurlHttpRequest::status(int& code) {
    long status = 0;
    curl_easy_getinfo(transfer_.handle(),
                      isProxyRefusal() ? CURLINFO_HTTP_CONNECTCODE : CURLINFO_RESPONSE_CODE,
                      &status);
    code = static_cast<int>(status);
    return true;
}

bool CurlHttpRequest::offeredSchemes(uint32_t& schemes, HttpTarget& target) {
    int code = 0;
    status(code);
    const bool proxy = code == PROXY_AUTHENTICATION;
    long offered = 0;
    curl_easy_getinfo(transfer_.handle(),
                      proxy ? CURLINFO_PROXYAUTH_AVAIL : CURLINFO_HTTPAUTH_AVAIL, &offered);
    // A password is for the server that it was entered for.
    schemes = proxy || mayBeToldToo(url_.c_str(), transfer_.effectiveUrl().c_str())
                  ? toSchemes(offered)
                  : HTTP_NO_SCHEME;
    target = proxy ? HttpTarget::PROXY : HttpTarget::SERVER;
    return true;
}

bool CurlHttpRequest::available(size_t& bytes) {
    if (endMark_.isSet()) {
        return failGivenUp();
    }
    if (!drive()) {
        return false;
    }
    bytes = received_.size() - taken_;
    return bytes != 0 || transfer_.result() == CURLE_OK || isProxyRefusal() || failTransfer();
}

bool CurlHttpRequest::read(char* buffer, size_t capacity, size_t& bytesRead) {
    bytesRead = received_.copy(buffer, capacity, taken_);
    taken_ += bytesRead;
    if (taken_ == received_.size()) {
        received_.clear();
        taken_ = 0;
    }
    return true;
}

}  // namespace intake
