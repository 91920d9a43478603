#pragma once

#include <string>

#include "formats/source/ByteBuffer.h"
#include "pipeline/ReaderLogger.h"
#include "pipeline/RequestRecord.h"
#include "platform/Diagnostics.h"
#include "platform/HttpClient.h"

namespace intake {

/// Fetches the body of one URL, answering servers and proxies that ask for credentials. Prints its
/// progress on standard output. Worker thread.
class RDR_HTTP {
public:
    /// All are borrowed and outlive this object.
    RDR_HTTP(HttpClient& client, ReaderLogger& logger, Diagnostics& diagnostics)
        : client_(client), logger_(logger), diagnostics_(diagnostics) {}

    /// A body of more is refused, before memory ends.
    static constexpr size_t MAX_BODY = size_t{1} << 30;

    /// Appends the body to `body`, whatever the response's status. The credentials, the proxy and
    /// the custom headers are the request's. False when there was no whole response; the reason was
    /// printed, unless the load was given up. Throws std::invalid_argument or std::out_of_range for
    /// a URL whose port is no number, std::length_error for a body of more than `maxBytes`.
    bool Fetch(const std::string& url, const RequestRecord& request, ByteBuffer& body,
               size_t maxBytes = MAX_BODY);

private:
    /// What one attempt leads to.
    enum class Outcome { FINISHED, AGAIN, FAILED };
    struct Attempts {
        int count = 0;
        int lastStatus = 0;
        HttpScheme proxyScheme = HTTP_NO_SCHEME;
        bool warned = false;
    };

    bool fail(const char* message, const HttpRequest& http);
    bool fail(const char* message, uint32_t error, const std::string& reason);
    void debugOutput(const std::string& reason);
    void addHeaders(HttpRequest& http, const RequestRecord& request);
    bool runAttempts(HttpRequest& http, const RequestRecord& request);
    Outcome attempt(HttpRequest& http, const RequestRecord& request, Attempts& attempts);
    Outcome answerServer(HttpRequest& http, const RequestRecord& request, Attempts& attempts,
                         bool refused);
    Outcome answerProxy(HttpRequest& http, Attempts& attempts, bool refused);
    HttpScheme chooseScheme(uint32_t offered, Attempts& attempts);

    bool setUpProxy(HttpRequest& http, const HttpAddress& address, const RequestRecord& request);
    void useDetectedProxy(HttpRequest& http, const std::string& url);
    void useSystemProxy(HttpRequest& http, const std::string& url);
    void logLateProxy();

    bool readBody(HttpRequest& http, ByteBuffer& body, size_t maxBytes);

    HttpClient& client_;
    ReaderLogger& logger_;
    Diagnostics& diagnostics_;
};

}  // namespace intake
