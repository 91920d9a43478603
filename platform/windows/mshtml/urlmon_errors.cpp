#include "platform/windows/mshtml/urlmon_errors.h"

#include <algorithm>
#include <array>

#include "platform/windows/com/com_error.h"
// Builds on COM's headers.
#include <urlmon.h>

namespace intake {

namespace {

struct Meaning {
    HRESULT failure;
    const char* text;
};

constexpr std::array<Meaning, 14> MEANINGS{{
    {MK_E_SYNTAX, "This is neither a URL nor a full path"},
    {INET_E_INVALID_URL, "The URL is not valid"},
    {INET_E_CANNOT_CONNECT, "The server cannot be connected to"},
    {INET_E_RESOURCE_NOT_FOUND, "The server was not found"},
    {INET_E_OBJECT_NOT_FOUND, "The page was not found"},
    {INET_E_DATA_NOT_AVAILABLE, "The server sent no data"},
    {INET_E_DOWNLOAD_FAILURE, "The transfer failed"},
    {INET_E_AUTHENTICATION_REQUIRED, "The server asks for a user and a password"},
    {INET_E_NO_VALID_MEDIA, "The server sent something that is no page"},
    {INET_E_CONNECTION_TIMEOUT, "The server did not answer in time"},
    {INET_E_INVALID_REQUEST, "The request is not valid"},
    {INET_E_UNKNOWN_PROTOCOL, "The URL begins with an unknown scheme"},
    {INET_E_SECURITY_PROBLEM, "The server's security certificate is not trusted"},
    {INET_E_REDIRECT_FAILED, "The server redirects to a place that cannot be reached"},
}};

}  // namespace

std::string urlmonMeaning(HRESULT failure) {
    const auto row = std::find_if(MEANINGS.begin(), MEANINGS.end(),
                                  [&](const Meaning& each) { return each.failure == failure; });
    return row == MEANINGS.end() ? comMeaning(static_cast<uint32_t>(failure)) : row->text;
}

}  // namespace intake
