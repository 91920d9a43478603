#include "pipeline/RDR_HTTP.h"

#include <array>
#include <stdexcept>

#include "pipeline/messages.h"
#include "pipeline/url.h"

namespace intake {

namespace {

constexpr const char* USER_AGENT = "NXR/1.0";
constexpr const char* LOCAL_HOSTS = "<local>";

constexpr const char* FAILED_STEP = "Error %d has occurred.\n";
constexpr const char* FAILED_WAIT = "Error %u in WinHttpQueryDataAvailable.\n";
constexpr const char* FAILED_READ = "Error %u in WinHttpReadData.\n";

constexpr int STATUS_OK = 200;
constexpr int STATUS_UNAUTHORIZED = 401;
constexpr int STATUS_PROXY_AUTHENTICATION = 407;

enum ProxyMode : int32_t { PROXY_AUTO_DETECT, PROXY_SYSTEM, PROXY_MANUAL };

// Servers and proxies that alternate their demands would otherwise never come to an end.
constexpr int MAX_ATTEMPTS = 32;

/// The order in which schemes are preferred.
constexpr std::array SCHEME_ORDER{HTTP_BASIC, HTTP_NEGOTIATE, HTTP_NTLM, HTTP_PASSPORT,
                                  HTTP_DIGEST};

}  // namespace

bool RDR_HTTP::Fetch(const std::string& url, const RequestRecord& request, ByteBuffer& body,
                     size_t maxBytes) {
    const HttpAddress address = splitUrl(url);
    const std::unique_ptr<HttpRequest> http = client_.open(address, USER_AGENT);
    if (http == nullptr) {
        return fail(FAILED_STEP, client_.lastError(), client_.lastErrorText());
    }
    addHeaders(*http, request);
    if (!setUpProxy(*http, address, request)) {
        return fail(FAILED_STEP, *http);
    }
    return runAttempts(*http, request) && readBody(*http, body, maxBytes);
}

bool RDR_HTTP::fail(const char* message, const HttpRequest& http) {
    return fail(message, http.lastError(), http.lastErrorText());
}

/// Prints the number of an error; its reason goes to the debugger's output. A load that was given
/// up has nobody left to tell.
bool RDR_HTTP::fail(const char* message, uint32_t error, const std::string& reason) {
    if (error == HTTP_ERROR_OPERATION_CANCELLED) {
        return false;
    }
    printToConsole(diagnostics_, message, error);
    debugOutput(reason);
    return false;
}

void RDR_HTTP::debugOutput(const std::string& reason) {
    diagnostics_.debugOutput(("ERROR: RDR_HTTP: " + reason + "\n").c_str());
}

/// Headers that cannot be added are left out.
void RDR_HTTP::addHeaders(HttpRequest& http, const RequestRecord& request) {
    if (request.useCustomHeaders != 0 && !request.customHeaders.empty() &&
        !http.addHeaders(request.customHeaders)) {
        debugOutput(http.lastErrorText());
    }
}

bool RDR_HTTP::runAttempts(HttpRequest& http, const RequestRecord& request) {
    Attempts attempts;
    while (attempts.count < MAX_ATTEMPTS) {
        ++attempts.count;
        switch (attempt(http, request, attempts)) {
            case Outcome::FINISHED:
                return true;
            case Outcome::FAILED:
                return fail(FAILED_STEP, http);
            case Outcome::AGAIN:
                break;
        }
    }
    return true;
}

RDR_HTTP::Outcome RDR_HTTP::attempt(HttpRequest& http, const RequestRecord& request,
                                    Attempts& attempts) {
    if (attempts.proxyScheme != HTTP_NO_SCHEME && request.enableProxy &&
        !http.setCredentials(HttpTarget::PROXY, attempts.proxyScheme, request.proxyUser,
                             request.proxyPwd)) {
        return Outcome::FAILED;
    }
    if (!http.send()) {
        const bool resend = http.lastError() == HTTP_ERROR_RESEND_REQUEST;
        return resend && attempts.count < MAX_ATTEMPTS ? Outcome::AGAIN : Outcome::FAILED;
    }
    int status = 0;
    if (!http.status(status)) {
        return Outcome::FAILED;
    }
    const bool refused = status == attempts.lastStatus;
    attempts.lastStatus = status;
    switch (status) {
        case STATUS_OK:
            printToConsole(diagnostics_, "The resource was successfully retrieved.\n");
            return Outcome::FINISHED;
        case STATUS_UNAUTHORIZED:
            return answerServer(http, request, attempts, refused);
        case STATUS_PROXY_AUTHENTICATION:
            return answerProxy(http, attempts, refused);
        default:
            printToConsole(diagnostics_, "Error. Status code %d returned.\n", status);
            return Outcome::FINISHED;
    }
}

RDR_HTTP::Outcome RDR_HTTP::answerServer(HttpRequest& http, const RequestRecord& request,
                                         Attempts& attempts, bool refused) {
    printToConsole(diagnostics_, " The server requires authentication. Sending credentials...\n");
    uint32_t offered = 0;
    HttpTarget target = HttpTarget::SERVER;
    if (!http.offeredSchemes(offered, target)) {
        return Outcome::FAILED;
    }
    const HttpScheme scheme = chooseScheme(offered, attempts);
    if (scheme == HTTP_NO_SCHEME) {
        return Outcome::FINISHED;
    }
    const std::string none;
    if (!http.setCredentials(target, scheme, request.useAuth ? request.userName : none,
                             request.useAuth ? request.password : none)) {
        return Outcome::FAILED;
    }
    return refused ? Outcome::FINISHED : Outcome::AGAIN;
}

RDR_HTTP::Outcome RDR_HTTP::answerProxy(HttpRequest& http, Attempts& attempts, bool refused) {
    printToConsole(diagnostics_, "The proxy requires authentication.  Sending credentials...\n");
    uint32_t offered = 0;
    HttpTarget target = HttpTarget::PROXY;
    if (!http.offeredSchemes(offered, target)) {
        return Outcome::FAILED;
    }
    attempts.proxyScheme = chooseScheme(offered, attempts);
    return refused ? Outcome::FINISHED : Outcome::AGAIN;
}

/// The first of the offered schemes that the user can use; passing one over is logged once.
HttpScheme RDR_HTTP::chooseScheme(uint32_t offered, Attempts& attempts) {
    for (const HttpScheme scheme : SCHEME_ORDER) {
        if ((offered & scheme) == 0) {
            continue;
        }
        if (client_.canUse(scheme)) {
            return scheme;
        }
        if (!attempts.warned) {
            logger_.Write(LOG_WARNING,
                          "HTTP: Negotiate is offered, but there is no Kerberos ticket.\n");
            attempts.warned = true;
        }
    }
    return HTTP_NO_SCHEME;
}

bool RDR_HTTP::setUpProxy(HttpRequest& http, const HttpAddress& address,
                          const RequestRecord& request) {
    if (!request.enableProxy) {
        return true;
    }
    switch (request.proxyMode) {
        case PROXY_AUTO_DETECT:
            useDetectedProxy(http, "http://" + address.host);
            return true;
        case PROXY_SYSTEM:
            useSystemProxy(http, (address.secure ? "https://" : "http://") + address.host);
            return true;
        case PROXY_MANUAL:
            return http.setProxy(request.proxyUrl, LOCAL_HOSTS) &&
                   http.setProxyUser(request.proxyUser) && http.setProxyPassword(request.proxyPwd);
        default:
            return true;
    }
}

/// A proxy that cannot be found leaves the request without one.
void RDR_HTTP::useDetectedProxy(HttpRequest& http, const std::string& url) {
    bool autoDetect = false;
    ProxyLookup lookup;
    const bool configured = client_.proxyDetection(autoDetect, lookup.scriptUrl);
    lookup.detect = (autoDetect || !configured) && lookup.scriptUrl.empty();
    std::string proxy;
    std::string bypass;
    if (!client_.proxyForUrl(url, lookup, proxy, bypass)) {
        debugOutput(client_.lastErrorText());
        logLateProxy();
    } else if (proxy.empty()) {
        http.setDirect();
    } else {
        http.setProxy(proxy, bypass);
    }
}

void RDR_HTTP::useSystemProxy(HttpRequest& http, const std::string& url) {
    std::string proxy;
    std::string bypass;
    if (client_.systemProxy(url, proxy, bypass)) {
        http.setProxy(proxy, bypass);
    } else {
        logLateProxy();
    }
}

/// To have no proxy is no fault, but not to know of one is.
void RDR_HTTP::logLateProxy() {
    if (client_.lastError() == HTTP_ERROR_TIMEOUT) {
        logger_.Write(LOG_WARNING, "HTTP: No proxy is used. " + client_.lastErrorText() + ".\n");
    }
}

bool RDR_HTTP::readBody(HttpRequest& http, ByteBuffer& body, size_t maxBytes) {
    for (;;) {
        size_t bytes = 0;
        if (!http.available(bytes)) {
            return fail(FAILED_WAIT, http);
        }
        if (bytes == 0) {
            return true;
        }
        if (bytes > maxBytes - body.size()) {
            throw std::length_error("The response is larger than " + std::to_string(maxBytes) +
                                    " bytes.\n");
        }
        size_t bytesRead = 0;
        if (!http.read(body.prepare(bytes), bytes, bytesRead)) {
            return fail(FAILED_READ, http);
        }
        body.commit(bytesRead);
    }
}

}  // namespace intake
