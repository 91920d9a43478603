// The functions of WinHTTP, in the place of the system's own, and the one that frees its texts.

// These functions are of this program, not imported.
#define _WINHTTP_INTERNAL_
#include <windows.h>
// Builds on the former.
#include <winhttp.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/windows/base/wide_text.h"
#include "tests/platform/windows/winhttp/WinHttpDouble.h"

namespace {

using intake::winHttp;

std::string show(const wchar_t* text) {
    return text == nullptr ? "null" : "\"" + intake::toUtf8(text) + "\"";
}

std::string show(WORD number) {
    return std::to_string(number);
}

std::string show(DWORD number) {
    std::array<char, 12> text{};
    std::snprintf(text.data(), text.size(), "0x%lx", number);
    return text.data();
}

/// Handles are their names.
std::string show(HINTERNET handle) {
    return handle == nullptr ? "null" : static_cast<const char*>(handle);
}

/// Notes a call with its arguments; false when it is to fail.
template <class... Arguments>
bool enter(const char* function, const Arguments&... arguments) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + show(arguments)), ...);
    return winHttp().enter(function, list);
}

std::string showOption(DWORD option, const void* value, DWORD size) {
    if (option == WINHTTP_OPTION_PROXY) {
        const auto& proxy = *static_cast<const WINHTTP_PROXY_INFO*>(value);
        return show(proxy.dwAccessType) + " " + show(proxy.lpszProxy) + " " +
               show(proxy.lpszProxyBypass);
    }
    if (option == WINHTTP_OPTION_SECURE_PROTOCOLS) {
        return show(*static_cast<const DWORD*>(value));
    }
    return show(static_cast<const wchar_t*>(value)) + ", " + show(size);
}

}  // namespace

extern "C" {

HINTERNET WINAPI WinHttpOpen(LPCWSTR agent, DWORD access, LPCWSTR proxy, LPCWSTR bypass,
                             DWORD flags) {
    return enter("WinHttpOpen", agent, access, proxy, bypass, flags)
               ? winHttp().openHandle("session")
               : nullptr;
}

HINTERNET WINAPI WinHttpConnect(HINTERNET session, LPCWSTR host, INTERNET_PORT port,
                                DWORD reserved) {
    return enter("WinHttpConnect", session, host, port, reserved)
               ? winHttp().openHandle("connection")
               : nullptr;
}

HINTERNET WINAPI WinHttpOpenRequest(HINTERNET connection, LPCWSTR verb, LPCWSTR path,
                                    LPCWSTR version, LPCWSTR referrer, LPCWSTR* accepted,
                                    DWORD flags) {
    const LPCWSTR firstAccepted = accepted == nullptr ? nullptr : *accepted;
    return enter("WinHttpOpenRequest", connection, verb, path, version, referrer, firstAccepted,
                 flags)
               ? winHttp().openHandle("request")
               : nullptr;
}

BOOL WINAPI WinHttpCloseHandle(HINTERNET handle) {
    enter("WinHttpCloseHandle", handle);
    winHttp().closeHandle(handle);
    return TRUE;
}

BOOL WINAPI WinHttpAddRequestHeaders(HINTERNET request, LPCWSTR headers, DWORD length,
                                     DWORD modifiers) {
    return enter("WinHttpAddRequestHeaders", request, headers, length, modifiers);
}

BOOL WINAPI WinHttpGetIEProxyConfigForCurrentUser(WINHTTP_CURRENT_USER_IE_PROXY_CONFIG* config) {
    if (!enter("WinHttpGetIEProxyConfigForCurrentUser")) {
        return FALSE;
    }
    config->fAutoDetect = winHttp().browserDetects;
    config->lpszAutoConfigUrl = winHttp().giveText(winHttp().browserScript);
    config->lpszProxy = winHttp().giveText(winHttp().browserProxy);
    config->lpszProxyBypass = winHttp().giveText(winHttp().browserBypass);
    return TRUE;
}

BOOL WINAPI WinHttpGetProxyForUrl(HINTERNET session, LPCWSTR url,
                                  WINHTTP_AUTOPROXY_OPTIONS* options, WINHTTP_PROXY_INFO* found) {
    if (!enter("WinHttpGetProxyForUrl", session, url, options->dwFlags, options->dwAutoDetectFlags,
               options->lpszAutoConfigUrl, static_cast<DWORD>(options->fAutoLogonIfChallenged))) {
        return FALSE;
    }
    found->dwAccessType = winHttp().foundAccess;
    found->lpszProxy = winHttp().giveText(winHttp().foundProxy);
    found->lpszProxyBypass = winHttp().giveText(winHttp().foundBypass);
    return TRUE;
}

BOOL WINAPI WinHttpSetOption(HINTERNET request, DWORD option, LPVOID value, DWORD size) {
    return winHttp().enter("WinHttpSetOption", show(request) + ", " + show(option) + ", " +
                                                   showOption(option, value, size));
}

BOOL WINAPI WinHttpSetCredentials(HINTERNET request, DWORD target, DWORD scheme, LPCWSTR user,
                                  LPCWSTR password, LPVOID reserved) {
    return enter("WinHttpSetCredentials", request, target, scheme, user, password, reserved);
}

BOOL WINAPI WinHttpSendRequest(HINTERNET request, LPCWSTR headers, DWORD headersLength, LPVOID body,
                               DWORD bodyLength, DWORD totalLength, DWORD_PTR) {
    return enter("WinHttpSendRequest", request, headers, headersLength, body, bodyLength,
                 totalLength);
}

BOOL WINAPI WinHttpReceiveResponse(HINTERNET request, LPVOID reserved) {
    return enter("WinHttpReceiveResponse", request, reserved);
}

BOOL WINAPI WinHttpQueryHeaders(HINTERNET request, DWORD level, LPCWSTR name, LPVOID value, LPDWORD,
                                LPDWORD) {
    if (!enter("WinHttpQueryHeaders", request, level, name)) {
        return FALSE;
    }
    auto& statuses = winHttp().statuses;
    *static_cast<DWORD*>(value) = statuses.front();
    statuses.erase(statuses.begin());
    return TRUE;
}

BOOL WINAPI WinHttpQueryAuthSchemes(HINTERNET request, LPDWORD schemes, LPDWORD first,
                                    LPDWORD target) {
    *schemes = winHttp().schemes;
    *first = winHttp().schemes;
    *target = winHttp().target;
    return enter("WinHttpQueryAuthSchemes", request);
}

BOOL WINAPI WinHttpQueryDataAvailable(HINTERNET request, LPDWORD bytes) {
    const auto& chunks = winHttp().chunks;
    *bytes = chunks.empty() ? 0 : static_cast<DWORD>(chunks.front().size());
    return enter("WinHttpQueryDataAvailable", request);
}

BOOL WINAPI WinHttpReadData(HINTERNET request, LPVOID buffer, DWORD capacity, LPDWORD bytesRead) {
    if (!enter("WinHttpReadData", request, capacity)) {
        return FALSE;
    }
    auto& chunks = winHttp().chunks;
    *bytesRead = static_cast<DWORD>(chunks.front().copy(static_cast<char*>(buffer), capacity));
    chunks.erase(chunks.begin());
    return TRUE;
}

static HGLOBAL WINAPI freeGlobal(HGLOBAL text) {
    winHttp().freeText(text);
    return nullptr;
}

/// Code that imports GlobalFree reaches it through this pointer.
extern HGLOBAL(WINAPI* const __imp_GlobalFree)(HGLOBAL);
HGLOBAL(WINAPI* const __imp_GlobalFree)(HGLOBAL) = freeGlobal;
}
