#include "platform/linux/xml_errors.h"

#include <algorithm>
#include <array>

#include "platform/linux/com_failures.h"

namespace intake {

namespace {

constexpr ComFailure INVALID_ARGUMENT{0x80070057, "The parameter is incorrect."};

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
    ComFailure failure;
};

constexpr std::array<ErrorRow, 26> TRANSFER_ERRORS{{
    {CURLE_URL_MALFORMAT, INVALID_ARGUMENT},
    {CURLE_COULDNT_RESOLVE_HOST, NOT_FOUND},
    {CURLE_COULDNT_CONNECT, NOT_FOUND},
    {CURLE_INTERFACE_FAILED, CANNOT_CONNECT},
    {CURLE_FTP_CANT_GET_HOST, CANNOT_CONNECT},
    {CURLE_FTP_ACCEPT_FAILED, CANNOT_CONNECT},
    {CURLE_OPERATION_TIMEDOUT, TIMED_OUT},
    {CURLE_FTP_ACCEPT_TIMEOUT, TIMED_OUT},
    {CURLE_SEND_ERROR, DOWNLOAD_FAILED},
    {CURLE_RECV_ERROR, DOWNLOAD_FAILED},
    {CURLE_GOT_NOTHING, DOWNLOAD_FAILED},
    {CURLE_PARTIAL_FILE, DOWNLOAD_FAILED},
    {CURLE_FTP_COULDNT_RETR_FILE, OBJECT_NOT_FOUND},
    {CURLE_REMOTE_FILE_NOT_FOUND, OBJECT_NOT_FOUND},
    {CURLE_REMOTE_ACCESS_DENIED, OBJECT_NOT_FOUND},
    {CURLE_LOGIN_DENIED, LOGIN_REQUIRED},
    {CURLE_AUTH_ERROR, LOGIN_REQUIRED},
    {CURLE_WEIRD_SERVER_REPLY, INVALID_RESPONSE},
    {CURLE_UNSUPPORTED_PROTOCOL, INVALID_RESPONSE},
    {CURLE_TOO_MANY_REDIRECTS, REDIRECT_FAILED},
    {CURLE_PEER_FAILED_VERIFICATION, INVALID_CERTIFICATE},
    {CURLE_SSL_ISSUER_ERROR, INVALID_CERTIFICATE},
    {CURLE_SSL_INVALIDCERTSTATUS, INVALID_CERTIFICATE},
    {CURLE_SSL_CONNECT_ERROR, SECURITY_PROBLEM},
    {CURLE_SSL_CACERT_BADFILE, SECURITY_PROBLEM},
    {CURLE_SSL_CIPHER, SECURITY_PROBLEM},
}};

}  // namespace

void throwXmlError(const std::string& description) {
    UNSPECIFIED.raise("libxml2", description);
}

void throwInvalidRequest(const std::string& description) {
    INVALID_ARGUMENT.raise("libcurl", description);
}

void throwTransferError(CURLcode code, const std::string& description) {
    const auto row = std::find_if(TRANSFER_ERRORS.begin(), TRANSFER_ERRORS.end(),
                                  [code](const ErrorRow& each) { return each.curl == code; });
    const ComFailure& failure = row == TRANSFER_ERRORS.end() ? UNSPECIFIED : row->failure;
    failure.raise("libcurl", description);
}

void throwGivenUp(const char* library) {
    ABORTED.raise(library, "The load was given up.");
}

}  // namespace intake
