#include "platform/windows/winhttp/WinHttpRequest.h"

#include <algorithm>

#include "platform/windows/base/wide_text.h"

namespace intake {

namespace {

constexpr DWORD LENGTH_FROM_TERMINATOR = static_cast<DWORD>(-1);

DWORD toSystem(HttpTarget target) {
    return target == HttpTarget::PROXY ? WINHTTP_AUTH_TARGET_PROXY : WINHTTP_AUTH_TARGET_SERVER;
}

}  // namespace

bool WinHttpRequest::addHeaders(const std::string& lines) {
    return error_.note(
        WinHttpAddRequestHeaders(request_.get(), toWide(lines).c_str(), LENGTH_FROM_TERMINATOR,
                                 WINHTTP_ADDREQ_FLAG_ADD | WINHTTP_ADDREQ_FLAG_REPLACE) != 0);
}

bool WinHttpRequest::setProxy(const std::string& address, const std::string& bypass) {
    std::wstring proxy = toWide(address);
    std::wstring except = toWide(bypass);
    return setProxyInfo(WINHTTP_ACCESS_TYPE_NAMED_PROXY, proxy.empty() ? nullptr : proxy.data(),
                        except.empty() ? nullptr : except.data());
}

bool WinHttpRequest::setDirect() {
    return setProxyInfo(WINHTTP_ACCESS_TYPE_NO_PROXY, nullptr, nullptr);
}

bool WinHttpRequest::setProxyInfo(DWORD accessType, wchar_t* proxy, wchar_t* bypass) {
    WINHTTP_PROXY_INFO info{accessType, proxy, bypass};
    return error_.note(WinHttpSetOption(request_.get(), WINHTTP_OPTION_PROXY, &info, sizeof info) !=
                       0);
}

bool WinHttpRequest::setProxyUser(const std::string& user) {
    return setText(WINHTTP_OPTION_PROXY_USERNAME, user);
}

bool WinHttpRequest::setProxyPassword(const std::string& password) {
    return setText(WINHTTP_OPTION_PROXY_PASSWORD, password);
}

/// The length counts the terminator, so that an empty text is one too.
bool WinHttpRequest::setText(DWORD option, const std::string& text) {
    std::wstring wide = toWide(text);
    return error_.note(WinHttpSetOption(request_.get(), option, wide.data(),
                                        static_cast<DWORD>(wide.size() + 1)) != 0);
}

bool WinHttpRequest::setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                                    const std::string& password) {
    return error_.note(WinHttpSetCredentials(request_.get(), toSystem(target), scheme,
                                             toWide(user).c_str(), toWide(password).c_str(),
                                             nullptr) != 0);
}

bool WinHttpRequest::send() {
    return error_.note(WinHttpSendRequest(request_.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                                          WINHTTP_NO_REQUEST_DATA, 0, 0, 0) != 0 &&
                       WinHttpReceiveResponse(request_.get(), nullptr) != 0);
}

bool WinHttpRequest::status(int& code) {
    DWORD number = 0;
    DWORD size = sizeof number;
    const bool found =
        WinHttpQueryHeaders(request_.get(), WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                            WINHTTP_HEADER_NAME_BY_INDEX, &number, &size,
                            WINHTTP_NO_HEADER_INDEX) != 0;
    code = static_cast<int>(number);
    return error_.note(found);
}

bool WinHttpRequest::offeredSchemes(uint32_t& schemes, HttpTarget& target) {
    DWORD supported = 0;
    DWORD first = 0;
    DWORD asking = 0;
    const bool found = WinHttpQueryAuthSchemes(request_.get(), &supported, &first, &asking) != 0;
    schemes = supported;
    target = asking == WINHTTP_AUTH_TARGET_PROXY ? HttpTarget::PROXY : HttpTarget::SERVER;
    return error_.note(found);
}

bool WinHttpRequest::available(size_t& bytes) {
    DWORD waiting = 0;
    const bool told = WinHttpQueryDataAvailable(request_.get(), &waiting) != 0;
    bytes = waiting;
    return error_.note(told);
}

bool WinHttpRequest::read(char* buffer, size_t capacity, size_t& bytesRead) {
    const auto most = static_cast<DWORD>(std::min<size_t>(capacity, MAXDWORD));
    DWORD got = 0;
    const bool taken = WinHttpReadData(request_.get(), buffer, most, &got) != 0;
    bytesRead = got;
    return error_.note(taken);
}

}  // namespace intake
