#include "platform/linux/curl/CurlHttpClient.h"

#include <gssapi/gssapi.h>

#include "platform/linux/curl/CurlHttpRequest.h"
#include "platform/linux/curl/system_proxy.h"

namespace intake {

namespace {

constexpr std::chrono::seconds PROXY_TIME(30);

bool hasKerberosTicket() {
    OM_uint32 minor = 0;
    gss_cred_id_t credentials = GSS_C_NO_CREDENTIAL;
    const OM_uint32 major =
        gss_acquire_cred(&minor, GSS_C_NO_NAME, GSS_C_INDEFINITE, GSS_C_NO_OID_SET, GSS_C_INITIATE,
                         &credentials, nullptr, nullptr);
    gss_release_cred(&minor, &credentials);
    return major == GSS_S_COMPLETE;
}

}  // namespace

std::unique_ptr<HttpRequest> CurlHttpClient::open(const HttpAddress& address,
                                                  const std::string& userAgent) {
    auto request = std::make_unique<CurlHttpRequest>(address, userAgent, connections_, endMark_);
    if (!request->isOpen()) {
        lastError_ = HTTP_ERROR_INTERNAL;
        lastErrorText_ = "The HTTP library could not be set up";
        return nullptr;
    }
    return request;
}

bool CurlHttpClient::canUse(HttpScheme scheme) {
    return scheme != HTTP_NEGOTIATE || hasKerberosTicket();
}

bool CurlHttpClient::proxyDetection(bool&, std::string&) {
    return false;  // detection is the configuration's own business here; proxyForUrl includes it
}

bool CurlHttpClient::systemProxy(const std::string& url, std::string& proxy, std::string& bypass) {
    return findSystemProxy(url, endMark_, PROXY_TIME, proxy, bypass);
}

bool CurlHttpClient::proxyForUrl(const std::string& url, const ProxyLookup&, std::string& proxy,
                                 std::string& bypass) {
    if (findSystemProxy(url, endMark_, PROXY_TIME, proxy, bypass) || endMark_.isSet()) {
        return true;  // a request of a load that was given up is not sent either way
    }
    lastError_ = HTTP_ERROR_PROXY_NOT_FOUND;
    lastErrorText_ = "No proxy was found for " + url;
    return false;
}

std::unique_ptr<KeptConnections> CurlHttpClients::keepConnections() {
    return std::make_unique<CurlConnections>();
}

std::unique_ptr<HttpClient> CurlHttpClients::create(KeptConnections& connections,
                                                    const EndMark& endMark) {
    return std::make_unique<CurlHttpClient>(static_cast<CurlConnections&>(connections), endMark);
}

}  // namespace intake
