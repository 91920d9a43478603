#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "platform/KeptConnections.h"

namespace intake {

/// Ways of proving who one is; the values form sets. Those of WinHTTP.
enum HttpScheme : uint32_t {
    HTTP_NO_SCHEME = 0,
    HTTP_BASIC = 0x01,
    HTTP_NTLM = 0x02,
    HTTP_PASSPORT = 0x04,
    HTTP_DIGEST = 0x08,
    HTTP_NEGOTIATE = 0x10,
};

/// Who asks for the proof.
enum class HttpTarget { SERVER, PROXY };

/// Error numbers of HTTP requests, as messages show them. Those of WinHTTP on every system.
enum HttpError : uint32_t {
    HTTP_ERROR_INVALID_PARAMETER = 87,
    HTTP_ERROR_TIMEOUT = 12002,
    HTTP_ERROR_INTERNAL = 12004,
    HTTP_ERROR_INVALID_URL = 12005,
    HTTP_ERROR_NAME_NOT_RESOLVED = 12007,
    HTTP_ERROR_OPERATION_CANCELLED = 12017,
    HTTP_ERROR_CANNOT_CONNECT = 12029,
    HTTP_ERROR_CONNECTION_BROKEN = 12030,
    HTTP_ERROR_RESEND_REQUEST = 12032,
    HTTP_ERROR_INVALID_SERVER_RESPONSE = 12152,
    HTTP_ERROR_REDIRECT_FAILED = 12156,
    HTTP_ERROR_PROXY_NOT_FOUND = 12180,
    HTTP_ERROR_SECURE_FAILURE = 12175,
};

/// One GET request. It can be sent several times, each time with what was set before; sending again
/// drops what was not read of the last response. Used by one worker thread. An operation that fails
/// returns false and leaves its number and text in lastError and lastErrorText.
class HttpRequest {
public:
    virtual ~HttpRequest() = default;

    /// Adds header lines, separated by line ends; a header that is there already is replaced.
    virtual bool addHeaders(const std::string& lines) = 0;

    /// Sends the request through a proxy, except to hosts on the bypass list: "<local>", which is
    /// every host without a dot, or what the client has found with the proxy.
    virtual bool setProxy(const std::string& address, const std::string& bypass) = 0;
    /// Sends the request straight to its server, whatever proxy the system has for requests that
    /// say nothing.
    virtual bool setDirect() = 0;

    virtual bool setProxyUser(const std::string& user) = 0;
    virtual bool setProxyPassword(const std::string& password) = 0;

    virtual bool setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                                const std::string& password) = 0;

    /// Sends the request and receives the response up to its body. Redirects are followed.
    virtual bool send() = 0;

    virtual bool status(int& code) = 0;

    /// The schemes that a 401 or 407 response offers, and who asks.
    virtual bool offeredSchemes(uint32_t& schemes, HttpTarget& target) = 0;

    /// Waits for more of the body; 0 bytes is its end.
    virtual bool available(size_t& bytes) = 0;

    /// Takes up to `capacity` bytes of what is available.
    virtual bool read(char* buffer, size_t capacity, size_t& bytesRead) = 0;

    virtual uint32_t lastError() const = 0;
    virtual std::string lastErrorText() const = 0;
};

/// How to look a proxy up: by asking the network, or by running a configuration script.
struct ProxyLookup {
    bool detect = false;  // by DHCP and DNS
    std::string scriptUrl;
};

/// Where a request goes.
struct HttpAddress {
    std::string host;
    uint16_t port;
    bool secure;
    std::string path;  // with its query part; begins with a slash
};

/// The system's HTTP client, one per worker thread. Transfers, and looking a proxy up, are given up
/// when the worker's end mark is set, where the system can.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Null on failure.
    virtual std::unique_ptr<HttpRequest> open(const HttpAddress& address,
                                              const std::string& userAgent) = 0;

    /// The number and the text of the last failure of an operation of this class.
    virtual uint32_t lastError() const = 0;
    virtual std::string lastErrorText() const = 0;

    /// Whether the user can prove who they are in this way at all.
    virtual bool canUse(HttpScheme scheme) = 0;

    /// What the user's own configuration says about finding a proxy; false when there is none.
    virtual bool proxyDetection(bool& autoDetect, std::string& scriptUrl) = 0;

    /// The proxy of the user's own configuration; false when there is none, and when the system
    /// does not say in time, which is HTTP_ERROR_TIMEOUT.
    virtual bool systemProxy(const std::string& url, std::string& proxy, std::string& bypass) = 0;

    /// Called while the request that was opened last lives. An empty `proxy` is a direct
    /// connection. False when no proxy was found for the URL, also in time, as above.
    virtual bool proxyForUrl(const std::string& url, const ProxyLookup& lookup, std::string& proxy,
                             std::string& bypass) = 0;
};

/// Makes HTTP clients, and what keeps their connections. Process-wide; any thread.
class HttpClients {
public:
    virtual ~HttpClients() = default;

    /// For one worker, which hands them to all that makes requests for it.
    virtual std::unique_ptr<KeptConnections> keepConnections() = 0;

    /// Both outlive the client.
    virtual std::unique_ptr<HttpClient> create(KeptConnections& connections,
                                               const EndMark& endMark) = 0;
};

}  // namespace intake
