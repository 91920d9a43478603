#include "platform/linux/curl/curl_errors.h"

#include <algorithm>
#include <array>

#include "platform/HttpClient.h"

namespace intake {

namespace {

constexpr ComFailure CANNOT_CONNECT{0x800C0004, "The attempt to connect has failed."};
constexpr ComFailure NOT_FOUND{0x800C0005, "The system cannot locate the resource specified."};
constexpr ComFailure OBJECT_NOT_FOUND{0x800C0006, "The object was not found."};
constexpr ComFailure DOWNLOAD_FAILED{0x800C0008, "The download of the resource has failed."};
constexpr ComFailure LOGIN_REQUIRED{0x800C0009, "Authentication is required."};
constexpr ComFailure TIMED_OUT{0x800C000B, "The connection has timed out."};
constexpr ComFailure INVALID_RESPONSE{0x800C000C, "The request or its response was invalid."};
constexpr ComFailure SECURITY_PROBLEM{0x800C000E, "A security problem was encountered."};
constexpr ComFailure REDIRECT_FAILED{0x800C0014, "The redirection has failed."};
constexpr ComFailure INVALID_CERTIFICATE{0x800C0019, "The certificate is invalid."};

struct ErrorRow {
    CURLcode curl;
    HttpError http;
    ComFailure com;
};

constexpr std::array<ErrorRow, 33> ERRORS{{
    {CURLE_URL_MALFORMAT, HTTP_ERROR_INVALID_URL, INVALID_ARGUMENT},
    {CURLE_OPERATION_TIMEDOUT, HTTP_ERROR_TIMEOUT, TIMED_OUT},
    {CURLE_COULDNT_RESOLVE_HOST, HTTP_ERROR_NAME_NOT_RESOLVED, NOT_FOUND},
    {CURLE_COULDNT_RESOLVE_PROXY, HTTP_ERROR_NAME_NOT_RESOLVED, UNSPECIFIED},
    {CURLE_COULDNT_CONNECT, HTTP_ERROR_CANNOT_CONNECT, NOT_FOUND},
    {CURLE_PROXY, HTTP_ERROR_CANNOT_CONNECT, UNSPECIFIED},
    {CURLE_INTERFACE_FAILED, HTTP_ERROR_INTERNAL, CANNOT_CONNECT},
    {CURLE_SEND_ERROR, HTTP_ERROR_CONNECTION_BROKEN, DOWNLOAD_FAILED},
    {CURLE_RECV_ERROR, HTTP_ERROR_CONNECTION_BROKEN, DOWNLOAD_FAILED},
    {CURLE_GOT_NOTHING, HTTP_ERROR_CONNECTION_BROKEN, DOWNLOAD_FAILED},
    {CURLE_PARTIAL_FILE, HTTP_ERROR_CONNECTION_BROKEN, DOWNLOAD_FAILED},
    {CURLE_WEIRD_SERVER_REPLY, HTTP_ERROR_INVALID_SERVER_RESPONSE, INVALID_RESPONSE},
    {CURLE_UNSUPPORTED_PROTOCOL, HTTP_ERROR_INVALID_SERVER_RESPONSE, INVALID_RESPONSE},
    {CURLE_TOO_MANY_REDIRECTS, HTTP_ERROR_REDIRECT_FAILED, REDIRECT_FAILED},
    {CURLE_LOGIN_DENIED, HTTP_ERROR_INTERNAL, LOGIN_REQUIRED},
    {CURLE_AUTH_ERROR, HTTP_ERROR_INTERNAL, LOGIN_REQUIRED},

    {CURLE_PEER_FAILED_VERIFICATION, HTTP_ERROR_SECURE_FAILURE, INVALID_CERTIFICATE},
    {CURLE_SSL_ISSUER_ERROR, HTTP_ERROR_SECURE_FAILURE, INVALID_CERTIFICATE},
    {CURLE_SSL_INVALIDCERTSTATUS, HTTP_ERROR_SECURE_FAILURE, INVALID_CERTIFICATE},
    {CURLE_SSL_CONNECT_ERROR, HTTP_ERROR_SECURE_FAILURE, SECURITY_PROBLEM},
    {CURLE_SSL_CACERT_BADFILE, HTTP_ERROR_SECURE_FAILURE, SECURITY_PROBLEM},
    {CURLE_SSL_CIPHER, HTTP_ERROR_SECURE_FAILURE, SECURITY_PROBLEM},
    {CURLE_SSL_CERTPROBLEM, HTTP_ERROR_SECURE_FAILURE, UNSPECIFIED},
    {CURLE_SSL_SHUTDOWN_FAILED, HTTP_ERROR_SECURE_FAILURE, UNSPECIFIED},
    {CURLE_SSL_CRL_BADFILE, HTTP_ERROR_SECURE_FAILURE, UNSPECIFIED},
    {CURLE_SSL_ENGINE_INITFAILED, HTTP_ERROR_SECURE_FAILURE, UNSPECIFIED},
    {CURLE_USE_SSL_FAILED, HTTP_ERROR_SECURE_FAILURE, UNSPECIFIED},

    {CURLE_FTP_CANT_GET_HOST, HTTP_ERROR_INTERNAL, CANNOT_CONNECT},
    {CURLE_FTP_ACCEPT_FAILED, HTTP_ERROR_INTERNAL, CANNOT_CONNECT},
    {CURLE_FTP_ACCEPT_TIMEOUT, HTTP_ERROR_INTERNAL, TIMED_OUT},
    {CURLE_FTP_COULDNT_RETR_FILE, HTTP_ERROR_INTERNAL, OBJECT_NOT_FOUND},
    {CURLE_REMOTE_FILE_NOT_FOUND, HTTP_ERROR_INTERNAL, OBJECT_NOT_FOUND},
    {CURLE_REMOTE_ACCESS_DENIED, HTTP_ERROR_INTERNAL, OBJECT_NOT_FOUND},
}};

/// For a code that is not in the table.
constexpr ErrorRow OTHER{CURLE_OK, HTTP_ERROR_INTERNAL, UNSPECIFIED};

const ErrorRow& rowOf(CURLcode code) {
    const auto* const row = std::find_if(
        ERRORS.begin(), ERRORS.end(), [code](const ErrorRow& each) { return each.curl == code; });
    return row == ERRORS.end() ? OTHER : *row;
}

}  // namespace

uint32_t toHttpError(CURLcode code) {
    return rowOf(code).http;
}

const ComFailure& comFailureOf(CURLcode code) {
    return rowOf(code).com;
}

std::string trueReason(std::string_view reason) {
    return reason.starts_with("getpeername()")
               ? "The server ended the connection as soon as it was made; it may ask for a "
                 "certificate of the client"
               : std::string(reason);
}

bool isBrokenTransfer(CURLcode code) {
    return code == CURLE_PARTIAL_FILE || code == CURLE_RECV_ERROR ||
           code == CURLE_OPERATION_TIMEDOUT;
}

}  // namespace intake
