#include "platform/windows/winhttp/WinHttpClient.h"

#include "platform/windows/base/wide_text.h"
#include "platform/windows/winhttp/NoConnections.h"
#include "platform/windows/winhttp/WinHttpRequest.h"

namespace intake {

namespace {

/// A text that the system returned, which is ours to free.
class SystemText {
public:
    explicit SystemText(wchar_t* text) : text_(text) {}
    ~SystemText() { GlobalFree(text_); }
    SystemText(const SystemText&) = delete;
    SystemText& operator=(const SystemText&) = delete;

    bool isGiven() const { return text_ != nullptr; }
    std::string narrow() const { return isGiven() ? toUtf8(text_) : std::string(); }

private:
    wchar_t* text_;
};

/// The user's browser configuration.
struct BrowserProxies {
    explicit BrowserProxies(const WINHTTP_CURRENT_USER_IE_PROXY_CONFIG& config)
        : autoDetect(config.fAutoDetect != FALSE),
          scriptUrl(config.lpszAutoConfigUrl),
          proxy(config.lpszProxy),
          bypass(config.lpszProxyBypass) {}

    bool autoDetect;
    SystemText scriptUrl;
    SystemText proxy;
    SystemText bypass;
};

std::unique_ptr<BrowserProxies> browserProxies() {
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG config{};
    return WinHttpGetIEProxyConfigForCurrentUser(&config) != 0
               ? std::make_unique<BrowserProxies>(config)
               : nullptr;
}

/// No version of TLS before 1.2. Systems that do not know 1.3 refuse both together.
bool allowTls(HINTERNET session) {
    DWORD versions = WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2 | WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_3;
    const auto allow = [&] {
        return WinHttpSetOption(session, WINHTTP_OPTION_SECURE_PROTOCOLS, &versions,
                                sizeof versions) != 0;
    };
    if (allow()) {
        return true;
    }
    versions = WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2;
    return allow();
}

WinHttpHandle openRequest(HINTERNET connection, const HttpAddress& address) {
    return WinHttpHandle(WinHttpOpenRequest(
        connection, L"GET", toWide(address.path).c_str(), nullptr, WINHTTP_NO_REFERER,
        WINHTTP_DEFAULT_ACCEPT_TYPES, address.secure ? WINHTTP_FLAG_SECURE : 0));
}

}  // namespace

std::unique_ptr<HttpRequest> WinHttpClient::open(const HttpAddress& address,
                                                 const std::string& userAgent) {
    WinHttpHandle session(WinHttpOpen(toWide(userAgent).c_str(), WINHTTP_ACCESS_TYPE_DEFAULT_PROXY,
                                      WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
    if (!error_.note(session != nullptr) || !error_.note(allowTls(session.get()))) {
        return nullptr;
    }
    WinHttpHandle connection(
        WinHttpConnect(session.get(), toWide(address.host).c_str(), address.port, 0));
    if (!error_.note(connection != nullptr)) {
        return nullptr;
    }
    WinHttpHandle request = openRequest(connection.get(), address);
    if (!error_.note(request != nullptr)) {
        return nullptr;
    }
    session_ = session.get();
    return std::make_unique<WinHttpRequest>(std::move(session), std::move(connection),
                                            std::move(request));
}

bool WinHttpClient::proxyDetection(bool& autoDetect, std::string& scriptUrl) {
    const std::unique_ptr<BrowserProxies> configured = browserProxies();
    if (!error_.note(configured != nullptr)) {
        return false;
    }
    autoDetect = configured->autoDetect;
    scriptUrl = configured->scriptUrl.narrow();
    return true;
}

bool WinHttpClient::systemProxy(const std::string&, std::string& proxy, std::string& bypass) {
    const std::unique_ptr<BrowserProxies> configured = browserProxies();
    if (!error_.note(configured != nullptr) || !configured->proxy.isGiven()) {
        return false;
    }
    proxy = configured->proxy.narrow();
    bypass = configured->bypass.narrow();
    return true;
}

bool WinHttpClient::proxyForUrl(const std::string& url, const ProxyLookup& lookup,
                                std::string& proxy, std::string& bypass) {
    const std::wstring script = toWide(lookup.scriptUrl);
    WINHTTP_AUTOPROXY_OPTIONS options{};
    options.fAutoLogonIfChallenged = FALSE;
    if (lookup.detect) {
        options.dwFlags = WINHTTP_AUTOPROXY_AUTO_DETECT;
        options.dwAutoDetectFlags = WINHTTP_AUTO_DETECT_TYPE_DHCP | WINHTTP_AUTO_DETECT_TYPE_DNS_A;
    } else {
        options.dwFlags = WINHTTP_AUTOPROXY_CONFIG_URL;
        options.lpszAutoConfigUrl = script.c_str();
    }
    WINHTTP_PROXY_INFO info{};
    const bool found = WinHttpGetProxyForUrl(session_, toWide(url).c_str(), &options, &info) != 0;
    const SystemText named(info.lpszProxy);
    const SystemText except(info.lpszProxyBypass);
    if (!error_.note(found)) {
        return false;
    }
    proxy = named.narrow();
    bypass = except.narrow();
    return true;
}

std::unique_ptr<KeptConnections> WinHttpClients::keepConnections() {
    return std::make_unique<NoConnections>();
}

std::unique_ptr<HttpClient> WinHttpClients::create(KeptConnections&, const EndMark&) {
    return std::make_unique<WinHttpClient>();
}

}  // namespace intake
