#include "workbench/probe/fetch/linux/UrlFetch.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "workbench/probe/fetch/fetch_file.h"
#include "workbench/probe/fetch/fetch_headers.h"
#include "workbench/probe/fetch/linux/origin.h"
#include "workbench/probe/fetch/linux/request_url.h"
#include "workbench/probe/fetch/linux/system_proxy.h"

namespace probe {

namespace {

constexpr long loginRequired = 401;
constexpr long proxyLoginRequired = 407;
constexpr long proxyPort = 80;  // of an address without one
constexpr std::chrono::seconds searchTime(30);

/// How a query type asks.
struct Manner {
    const char* agent;
    const char* packings;  // that the server is told of and that are unpacked; none for null
    bool keepsPath;        // also one with dots
};

Manner mannerOf(QueryType type) {
    switch (type) {
        case QueryType::Json:
            return {"NXR/1.0", nullptr, true};
        case QueryType::Html:
            return {"Mozilla/5.0 (compatible; NXR/1.0)", "", false};  // all that libcurl unpacks
        default:
            return {"NXR/1.0", "gzip, deflate", true};
    }
}

}  // namespace

UrlFetch::UrlFetch(const Settings& settings, const Source& source, double timeoutSeconds)
    : settings_(settings),
      source_(source),
      timeoutSeconds_(timeoutSeconds),
      end_(Clock::now() + std::chrono::duration_cast<Clock::duration>(
                              std::chrono::duration<double>(timeoutSeconds))),
      url_(requestUrl(settings)) {
    certificates_.watch(transfer_);
    setRequest();
    setCredentials();
    setProxy();
}

void UrlFetch::setRequest() {
    const Manner manner = mannerOf(settings_.queryMode);
    transfer_.set(CURLOPT_URL, url_.c_str());
    transfer_.set(CURLOPT_USERAGENT, manner.agent);
    transfer_.set(CURLOPT_PATH_AS_IS, manner.keepsPath ? 1L : 0L);
    transfer_.setHeaders(requestHeaders(settings_));
}

/// For JSON nothing is proved before it is asked for; for HTML there are no credentials but those
/// of the address.
void UrlFetch::setCredentials() {
    if (settings_.queryMode == QueryType::Json) {
        transfer_.set(CURLOPT_USERNAME, "");
        transfer_.set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_NONE));
        transfer_.set(CURLOPT_PROXYAUTH, static_cast<long>(CURLAUTH_NONE));
    }
    if (settings_.queryMode != QueryType::Xml || !settings_.useAuth) return;
    transfer_.set(CURLOPT_HTTPAUTH,
                  static_cast<long>(CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM));
    transfer_.set(CURLOPT_USERNAME, settings_.userName.c_str());
    transfer_.set(CURLOPT_PASSWORD, settings_.password.c_str());
}

/// Only JSON goes through one.
void UrlFetch::setProxy() {
    if (settings_.queryMode != QueryType::Json || !settings_.enableProxy) return;
    const Origin server = originOf(url_);
    if (settings_.proxyMode == ProxyMode::AutoDetect) return useSystemProxy("http", server.host);
    if (settings_.proxyMode == ProxyMode::System) return useSystemProxy(server.scheme, server.host);
    if (settings_.proxyUrl.empty())
        throw FetchFailure(FetchFailure::Stage::Address,
                           "cannot be asked for: a proxy is switched on that has no address",
                           "Set \"Proxy URL\" (proxyUrl), or switch \"Proxy on/off\" "
                           "(enableProxy) off.");
    const bool isLocal = server.host.find('.') == std::string::npos;
    useProxy(settings_.proxyUrl, isLocal ? server.host : "");
    transfer_.set(CURLOPT_PROXYUSERNAME, settings_.proxyUser.c_str());
    transfer_.set(CURLOPT_PROXYPASSWORD, settings_.proxyPwd.c_str());
}

/// Like the plugin it goes on without a proxy that is not known in time; time is left for that.
void UrlFetch::useSystemProxy(const std::string& scheme, const std::string& host) {
    const auto limit = std::min<std::chrono::milliseconds>(searchTime, timeLeft() / 2);
    const auto found = systemProxy(scheme, host, limit);
    isProxyUnknown_ = !found;
    if (found) useProxy(found->address, found->exceptions);
}

void UrlFetch::useProxy(const std::string& address, const std::string& exceptions) {
    if (!address.empty() && originOf(address).host.empty())
        throw FetchFailure(FetchFailure::Stage::Address,
                           "cannot be asked for: the proxy has no address that can be read",
                           "Correct \"Proxy URL\" (proxyUrl): proxy.example:3128.");
    proxy_ = address;
    proxyExceptions_ = exceptions;
    transfer_.set(CURLOPT_PROXY, address.c_str());
    transfer_.set(CURLOPT_PROXYPORT, proxyPort);
    transfer_.set(CURLOPT_NOPROXY, exceptions.c_str());
}

std::chrono::milliseconds UrlFetch::timeLeft() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now());
}

long UrlFetch::status() const {
    constexpr long firstRefusal = 300;
    if (!transfer_.isHttp()) return 0;
    return connectStatus() >= firstRefusal ? connectStatus()
                                           : transfer_.number(CURLINFO_RESPONSE_CODE);
}

bool UrlFetch::asksForLogin() const {
    return status() == loginRequired || status() == proxyLoginRequired;
}

/// Each of server and proxy is told the credentials once.
CURLcode UrlFetch::runAttempts() {
    CURLcode code = runAttempt();
    bool hasToldServer = false, hasToldProxy = false;
    for (;;) {
        if (status() == loginRequired && !hasToldServer && mayProveToServer())
            hasToldServer = true;
        else if (status() == proxyLoginRequired && !hasToldProxy && mayProveToProxy())
            hasToldProxy = true;
        else
            return code;
        code = runAttempt();
    }
}

/// What cannot be unpacked is asked for once more, to be taken as it comes: some servers name as a
/// packing what is none.
CURLcode UrlFetch::runAttempt() {
    const char* const packings = mannerOf(settings_.queryMode).packings;
    const CURLcode code = receive(packings);
    return code == CURLE_BAD_CONTENT_ENCODING && !asksForLogin() ? receive(nullptr) : code;
}

CURLcode UrlFetch::receive(const char* packings) {
    body_.clear();
    isTooLarge_ = isBomb_ = false;
    transfer_.set(CURLOPT_ACCEPT_ENCODING, packings);
    const CURLcode code =
        transfer_.run(timeLeft(), [this](std::string_view bytes) { return take(bytes); });
    isPacked_ = packings == nullptr && !transfer_.encoding().empty() &&
                !intake::equalIgnoringCase(transfer_.encoding(), "identity");
    return code;
}

bool UrlFetch::take(std::string_view bytes) {
    constexpr std::size_t highestRatio = 250, allowance = std::size_t{128} * 1024;
    curl_off_t received = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_SIZE_DOWNLOAD_T, &received);
    isTooLarge_ = bytes.size() > source_.mostBytes - body_.size();
    isBomb_ = body_.size() / highestRatio > static_cast<std::size_t>(received) + allowance;
    if (isTooLarge_ || isBomb_) return false;
    body_.append(bytes);
    return true;
}

/// For XML the library has proved itself to the very origin that was asked, and to no other.
bool UrlFetch::mayProveToServer() {
    const std::string answering = transfer_.address();
    const bool isRedirected = transfer_.isRedirected();
    const bool isJson = settings_.queryMode == QueryType::Json;
    const bool isXmlElsewhere = settings_.queryMode == QueryType::Xml && isRedirected;
    if (!settings_.useAuth || !(isJson || isXmlElsewhere) || transfer_.hasProvedToServer() ||
        !mayBeToldToo(url_, answering))
        return false;
    if (isJson && !chooseScheme(CURLINFO_HTTPAUTH_AVAIL, CURLOPT_HTTPAUTH)) return false;
    transfer_.set(CURLOPT_USERNAME, settings_.userName.c_str());
    transfer_.set(CURLOPT_PASSWORD, settings_.password.c_str());
    if (isRedirected) transfer_.set(CURLOPT_URL, answering.c_str());  // who asks is answered
    earlierRedirects_ = transfer_.redirects();
    return true;
}

bool UrlFetch::mayProveToProxy() {
    const bool isKnown = !settings_.proxyUser.empty() && !transfer_.hasProvedToProxy();
    transfer_.set(CURLOPT_PROXYUSERNAME, settings_.proxyUser.c_str());
    transfer_.set(CURLOPT_PROXYPASSWORD, settings_.proxyPwd.c_str());
    return isKnown && chooseScheme(CURLINFO_PROXYAUTH_AVAIL, CURLOPT_PROXYAUTH);
}

/// The first of the offered schemes, in the order in which the plugin prefers them.
bool UrlFetch::chooseScheme(CURLINFO offered, CURLoption chosen) {
    constexpr std::array schemes{CURLAUTH_BASIC, CURLAUTH_NTLM, CURLAUTH_DIGEST};
    const auto offers = static_cast<unsigned long>(transfer_.number(offered));
    const auto* const scheme =
        std::find_if(schemes.begin(), schemes.end(),
                     [offers](unsigned long each) { return (offers & each) != 0; });
    if (scheme == schemes.end()) return false;
    transfer_.set(chosen, static_cast<long>(*scheme));
    return true;
}

Fetched UrlFetch::run() {
    try {
        return fetchOrThrow();
    } catch (FetchFailure& failure) {
        failure.isProxyUnknown = isProxyUnknown_;
        throw;
    }
}

Fetched UrlFetch::fetchOrThrow() {
    const CURLcode code = runAttempts();
    refuseBody();
    refuseOtherScheme(code);
    // Who asks for a login has answered, even with what cannot be unpacked, or without a tunnel.
    const bool isAnswer = asksForLogin() && (code == CURLE_BAD_CONTENT_ENCODING ||
                                             connectStatus() == proxyLoginRequired);
    if (code != CURLE_OK && !isAnswer) refuse(code);
    return fetched();
}

Fetched UrlFetch::fetched() {
    Fetched fetched;
    fetched.body = std::move(body_);
    fetched.address = transfer_.address();
    fetched.status = status();
    fetched.isProxyUnknown = isProxyUnknown_;
    fetched.exchange = transfer_.exchange();
    fetched.contentType = transfer_.text(CURLINFO_CONTENT_TYPE);
    fetched.encoding = isPacked_ ? transfer_.encoding() : "";
    fetched.redirects = std::move(earlierRedirects_);
    fetched.redirects.insert(fetched.redirects.end(), transfer_.redirects().begin(),
                             transfer_.redirects().end());
    if (intake::startsWithIgnoringCase(fetched.address, "https:"))
        fetched.certificate = certificates_.certificate();
    fetched.credentialsRefused =
        (fetched.status == loginRequired && transfer_.hasProvedToServer()) ||
        (fetched.status == proxyLoginRequired && transfer_.hasProvedToProxy());
    return fetched;
}

}  // namespace probe
