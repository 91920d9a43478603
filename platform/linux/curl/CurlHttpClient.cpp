#include "platform/linux/curl/CurlHttpClient.h"

#include <gssapi/gssapi.h>

#include "platform/linux/curl/CurlHttpRequest.h"
#include "platform/linux/curl/system_proxy.h"

namespace intake {

namespace {

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
        fail(HTTP_ERROR_INTERNAL, "The HTTP library could not be set up");
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
    switch (findSystemProxy(url, endMark_, proxyTime_, proxy, bypass)) {
        case CallOutcome::DONE:
            return !proxy.empty() ||
                   fail(HTTP_ERROR_PROXY_NOT_FOUND, "No proxy was found for " + url);
        case CallOutcome::ENDED:
            return fail(HTTP_ERROR_OPERATION_CANCELLED, "The load was given up");
        case CallOutcome::LATE:
            return fail(HTTP_ERROR_TIMEOUT,
                        "The system does not say in time which proxy to use for " + url);
        case CallOutcome::BUSY:
            break;
    }
    return fail(HTTP_ERROR_TIMEOUT, "An earlier search for a proxy has not ended yet");
}

bool CurlHttpClient::proxyForUrl(const std::string& url, const ProxyLookup&, std::string& proxy,
                                 std::string& bypass) {
    // A request of a load that was given up is not sent either way.
    return systemProxy(url, proxy, bypass) || lastError_ == HTTP_ERROR_OPERATION_CANCELLED;
}

bool CurlHttpClient::fail(uint32_t error, const std::string& text) {
    lastError_ = error;
    lastErrorText_ = text;
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
