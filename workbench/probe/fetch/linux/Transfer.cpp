#include "workbench/probe/fetch/linux/Transfer.h"

#include <openssl/crypto.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/probe/fetch/linux/ThreadForCurl.h"
#include "workbench/probe/fetch/linux/origin.h"

namespace probe {

namespace {

struct Switch {
    CURLoption option;
    long value;
};
constexpr std::array switches{
    Switch{CURLOPT_NOSIGNAL, 1},
    Switch{CURLOPT_QUICK_EXIT, 1},  // no waiting for a name server
    Switch{CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1},
    Switch{CURLOPT_FOLLOWLOCATION, 1},
    Switch{CURLOPT_MAXREDIRS, 10},
    Switch{CURLOPT_SUPPRESS_CONNECT_HEADERS, 1},
    Switch{CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2},
    Switch{CURLOPT_PROXY_SSLVERSION, CURL_SSLVERSION_TLSv1_2},
    Switch{CURLOPT_VERBOSE, 1},  // for onTrace, which prints nothing
};

/// The plugin's workers may still be in a transfer when the process ends; so nothing may be taken
/// down then, and who comes first decides that.
void initialiseLibraries() {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

CURL* newHandle() {
    static const bool initialised = (initialiseLibraries(), true);
    static_cast<void>(initialised);
    CURL* const handle = curl_easy_init();
    if (handle == nullptr) throw std::bad_alloc();
    return handle;
}

/// The value of a header line of that name, such as "location:"; empty for any other line.
std::string_view valueOf(std::string_view line, std::string_view name) {
    if (line.size() < name.size() || !intake::startsWithIgnoringCase(line, name)) return {};
    return intake::trimmed(line.substr(name.size()), intake::XML_SPACE);
}

bool hasLine(std::string_view header, std::string_view name) {
    return intake::lowerCase(header).find("\n" + std::string(name)) != std::string::npos;
}

/// Adds a line of a head, without what proves who asks. The empty line at its end is left out.
void appendShown(std::string_view line, std::string& head) {
    constexpr std::array secret{"authorization", "proxy-authorization", "cookie", "set-cookie"};
    constexpr std::size_t longest = 16'000;
    line = line.substr(0, line.find_last_not_of("\r\n") + 1);
    if (line.empty() || head.size() + line.size() > longest) return;
    const std::string_view name = line.substr(0, line.find(':'));
    const bool isSecret = std::any_of(secret.begin(), secret.end(), [name](const char* each) {
        return intake::equalIgnoringCase(name, each);
    });
    head += isSecret ? std::string(name) + ": ••••" : std::string(line);
    head += '\n';
}

}  // namespace

Transfer::Transfer() : words_(CURL_ERROR_SIZE), handle_(newHandle()) {
    setWays();
}

void Transfer::setWays() {
    for (const auto& [option, value] : switches)
        set(option, value);
    set(CURLOPT_ERRORBUFFER, words_.data());
    set(CURLOPT_PROTOCOLS_STR, "http,https,ftp");
    for (const CURLoption option : {CURLOPT_COOKIEFILE, CURLOPT_PROXY, CURLOPT_NOPROXY})
        set(option, "");  // no cookies of before, and nothing of the environment
    const char* const authorities = std::getenv("SSL_CERT_FILE");
    if (authorities != nullptr && authorities[0] != 0) {
        set(CURLOPT_CAINFO, authorities);
        set(CURLOPT_PROXY_CAINFO, authorities);
    }
    set(CURLOPT_WRITEFUNCTION, onBody);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_HEADERFUNCTION, onHeader);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_DEBUGFUNCTION, onTrace);
    set(CURLOPT_DEBUGDATA, this);
}

void Transfer::setHeaders(const std::vector<std::string>& lines) {
    headers_.reset();
    for (const std::string& line : lines) {
        curl_slist* const list = curl_slist_append(headers_.get(), line.c_str());
        if (list == nullptr) throw std::bad_alloc();
        static_cast<void>(headers_.release());  // it is part of the new list
        headers_.reset(list);
    }
    set(CURLOPT_HTTPHEADER, headers_.get());
}

CURLcode Transfer::run(std::chrono::milliseconds limit, Sink sink) {
    sink_ = std::move(sink);
    redirects_.clear();
    location_.clear();
    encoding_.clear();
    words_[0] = 0;
    exchange_ = {};
    status_ = followUps_ = 0;
    isWithinHeader_ = hasProvedToServer_ = hasProvedToProxy_ = hasBegunTls_ = false;
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_TIMEOUT_MS, std::max<long>(1, static_cast<long>(limit.count())));  // 0 is none
    const ThreadForCurl thread;
    const CURLcode code = curl_easy_perform(handle());
    return code == CURLE_OK && isWithinHeader_ ? CURLE_PARTIAL_FILE : code;
}

std::string Transfer::text(CURLINFO info) const {
    const char* text = nullptr;
    curl_easy_getinfo(handle(), info, &text);
    return text == nullptr ? "" : text;
}

std::string Transfer::address() const {
    return withoutUser(text(CURLINFO_EFFECTIVE_URL));
}

long Transfer::number(CURLINFO info) const {
    long number = 0;
    curl_easy_getinfo(handle(), info, &number);
    return number;
}

bool Transfer::isHttp() const {
    return intake::startsWithIgnoringCase(text(CURLINFO_SCHEME), "http");
}

/// Takes the lines of every answer; over FTP all that the server says.
void Transfer::noteHeader(std::string_view line) {
    if (line.starts_with("HTTP/")) {
        exchange_.answer.clear();
        if (leadsOn()) redirects_.push_back({status_, address()});
        followUps_ = number(CURLINFO_REDIRECT_COUNT);
        location_.clear();
        encoding_.clear();
        isWithinHeader_ = true;
    } else if (line.find_first_not_of("\r\n") == std::string_view::npos) {
        status_ = number(CURLINFO_RESPONSE_CODE);
        isWithinHeader_ = false;
        stayOnHttps();
    }
    if (isHttp()) appendShown(line, exchange_.answer);
    if (const auto value = valueOf(line, "location:"); !value.empty()) location_ = value;
    if (const auto value = valueOf(line, "content-encoding:"); !value.empty()) encoding_ = value;
}

/// Whether the latest answer was a redirect that is followed. The library counts what it asks again
/// to prove who asks, too.
bool Transfer::leadsOn() const {
    constexpr long firstRedirect = 300, firstRefusal = 400;
    return number(CURLINFO_REDIRECT_COUNT) > followUps_ && status_ >= firstRedirect &&
           status_ < firstRefusal;
}

bool Transfer::isRedirected() const {
    return !redirects_.empty() || leadsOn();
}

/// Lets no further redirect lead to HTTP when the latest answer came over HTTPS.
void Transfer::stayOnHttps() {
    if (intake::equalIgnoringCase(text(CURLINFO_SCHEME), "https"))
        set(CURLOPT_REDIR_PROTOCOLS_STR, "https");
}

/// A header may come in pieces, of which the first has the method.
void Transfer::noteRequest(std::string_view header) {
    if (header.starts_with("GET ") || header.starts_with("CONNECT ")) {
        hasProvedToServer_ = hasProvedToProxy_ = false;
        exchange_ = {};
    }
    for (std::size_t at = 0; at < header.size();) {
        const std::size_t end = std::min(header.find('\n', at), header.size() - 1) + 1;
        appendShown(header.substr(at, end - at), exchange_.request);
        at = end;
    }
    hasProvedToServer_ = hasProvedToServer_ || hasLine(header, "authorization:");
    hasProvedToProxy_ = hasProvedToProxy_ || hasLine(header, "proxy-authorization:");
}

std::size_t Transfer::onBody(const char* data, std::size_t size, std::size_t count, void* self) {
    try {
        return static_cast<Transfer*>(self)->sink_({data, size * count}) ? size * count : 0;
    } catch (const std::bad_alloc&) {  // nothing may fly through the library
        return 0;
    }
}

std::size_t Transfer::onHeader(const char* data, std::size_t size, std::size_t count, void* self) {
    static_cast<Transfer*>(self)->noteHeader({data, size * count});
    return size * count;
}

int Transfer::onTrace(CURL*, curl_infotype type, char* data, std::size_t size, void* self) {
    Transfer& transfer = *static_cast<Transfer*>(self);
    if (type == CURLINFO_HEADER_OUT) transfer.noteRequest({data, size});
    transfer.hasBegunTls_ = transfer.hasBegunTls_ || type == CURLINFO_SSL_DATA_OUT;
    return 0;
}

}  // namespace probe
