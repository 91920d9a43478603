#include <curl/curl.h>
#include <openssl/crypto.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

#include "formats/text/ascii.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/recognise.h"
#include "workbench/probe/source_start.h"

namespace probe {

namespace {

constexpr long patienceSeconds = 10;
constexpr long mostRedirects = 10;
constexpr long firstErrorStatus = 400;

struct Reason {
    CURLcode code;
    const char* words;
};

constexpr std::array reasons{
    Reason{CURLE_URL_MALFORMAT, "is no address that can be read"},
    Reason{CURLE_COULDNT_RESOLVE_HOST, "names a server that nobody knows"},
    Reason{CURLE_COULDNT_CONNECT, "cannot be reached: nothing answers at that address"},
    Reason{CURLE_OPERATION_TIMEDOUT, "did not come within 10 seconds"},
    Reason{CURLE_TOO_MANY_REDIRECTS, "is redirected without end"},
    Reason{CURLE_UNSUPPORTED_PROTOCOL, "is redirected to where it must not be followed"},
    Reason{CURLE_PEER_FAILED_VERIFICATION, "is on a server whose certificate is not trusted"},
    Reason{CURLE_SSL_CONNECT_ERROR, "is on a server with which no secure connection can be made"},
    Reason{CURLE_GOT_NOTHING, "did not come: the server ended the connection"},
    Reason{CURLE_RECV_ERROR, "did not come: the server broke the connection off"},
    Reason{CURLE_PARTIAL_FILE, "did not come whole: the server ended the connection"},
    Reason{CURLE_REMOTE_FILE_NOT_FOUND, "is not there, says the server"},
    Reason{CURLE_LOGIN_DENIED, "is kept behind a user name and a password that are others"},
};

[[noreturn]] void fail(CURLcode code) {
    const auto* const reason = std::find_if(
        reasons.begin(), reasons.end(), [code](const Reason& each) { return each.code == code; });
    if (reason != reasons.end()) throw LookFailure(reason->words);
    throw LookFailure(std::string("cannot be fetched: ") + curl_easy_strerror(code));
}

/// The plugin's workers may still be in a transfer when the process ends; so nothing may be taken
/// down then, and who comes first decides that.
void initialiseLibraries() {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

/// One transfer, which it ends as soon as there is enough.
class Look {
public:
    explicit Look(const Request& request) {
        setWays();
        if (!request.user.empty()) setUser(request);
        addHeader("Accept:");  // the plugin sends none
        for (const std::string& line : request.headers)
            addHeader(line);
        set(CURLOPT_HTTPHEADER, headers_.get());
    }
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;

    std::string at(const std::string& url) {
        const bool isSecure = intake::startsWithIgnoringCase(url, "https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, isSecure ? "https" : "http,https");
        set(CURLOPT_URL, url.c_str());
        const CURLcode code = curl_easy_perform(handle_.get());
        refuseErrors();
        const bool isCut = code == CURLE_WRITE_ERROR || code == CURLE_OPERATION_TIMEDOUT;
        if (code != CURLE_OK && !(isCut && !start_.empty())) fail(code);
        return std::move(start_);
    }

private:
    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(handle_.get(), option, value);
    }

    // As the plugin fetches, but with less patience.
    void setWays() {
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_USERAGENT, "NXR/1.0");
        set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
        set(CURLOPT_PROTOCOLS_STR, "http,https,ftp");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, mostRedirects);
        set(CURLOPT_COOKIEFILE, "");
        set(CURLOPT_PATH_AS_IS, 1L);
        set(CURLOPT_PROXY, "");
        set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
        const char* const authorities = std::getenv("SSL_CERT_FILE");
        if (authorities != nullptr && authorities[0] != 0) set(CURLOPT_CAINFO, authorities);
        set(CURLOPT_TIMEOUT, patienceSeconds);
        set(CURLOPT_WRITEFUNCTION, onBytes);
        set(CURLOPT_WRITEDATA, this);
    }

    void setUser(const Request& request) {
        set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_ANY));
        set(CURLOPT_USERNAME, request.user.c_str());
        set(CURLOPT_PASSWORD, request.password.c_str());
    }

    void addHeader(const std::string& line) {
        curl_slist* const list = curl_slist_append(headers_.get(), line.c_str());
        if (list == nullptr) return;
        static_cast<void>(headers_.release());  // it is part of the new list
        headers_.reset(list);
    }

    void refuseErrors() const {
        long status = 0;
        const char* scheme = nullptr;
        curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
        curl_easy_getinfo(handle_.get(), CURLINFO_SCHEME, &scheme);
        const bool isHttp = scheme != nullptr && intake::startsWithIgnoringCase(scheme, "http");
        if (!isHttp || status < firstErrorStatus) return;
        constexpr long loginRequired = 401;
        if (status == loginRequired)
            throw LookFailure(
                "is kept behind a user name and a password, and these are none or others (401); "
                "set useAuth, userName and password");
        throw LookFailure("is not to be had: the server answers with status " +
                          std::to_string(status));
    }

    static std::size_t onBytes(const char* data, std::size_t size, std::size_t count, void* self) {
        std::string& start = static_cast<Look*>(self)->start_;
        start.append(data, size * count);
        return start.size() < recognisableBytes ? size * count : 0;
    }

    struct Cleanup {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };
    std::unique_ptr<curl_slist, Cleanup> headers_;
    std::unique_ptr<CURL, Cleanup> handle_{curl_easy_init()};
    std::string start_;
};

}  // namespace

std::string startOfUrl(const std::string& url, const Request& request) {
    static const bool initialised = (initialiseLibraries(), true);
    static_cast<void>(initialised);
    return Look(request).at(url);
}

}  // namespace probe
