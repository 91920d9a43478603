#pragma once

#include "platform/HttpClient.h"
#include "platform/windows/winhttp/WinHttpError.h"
#include "platform/windows/winhttp/WinHttpHandle.h"

namespace intake {

/// One GET request by WinHTTP, with the session and the connection that it goes over.
class WinHttpRequest final : public HttpRequest {
public:
    WinHttpRequest(WinHttpHandle session, WinHttpHandle connection, WinHttpHandle request)
        : session_(std::move(session)),
          connection_(std::move(connection)),
          request_(std::move(request)) {}

    bool addHeaders(const std::string& lines) override;
    bool setProxy(const std::string& address, const std::string& bypass) override;
    bool setDirect() override;
    bool setProxyUser(const std::string& user) override;
    bool setProxyPassword(const std::string& password) override;
    bool setCredentials(HttpTarget target, HttpScheme scheme, const std::string& user,
                        const std::string& password) override;
    bool send() override;
    bool status(int& code) override;
    bool offeredSchemes(uint32_t& schemes, HttpTarget& target) override;
    bool available(size_t& bytes) override;
    bool read(char* buffer, size_t capacity, size_t& bytesRead) override;
    uint32_t lastError() const override { return error_.number(); }
    std::string lastErrorText() const override { return error_.text(); }

private:
    bool setText(DWORD option, const std::string& text);
    bool setProxyInfo(DWORD accessType, wchar_t* proxy, wchar_t* bypass);

    // Destroyed from below: a request goes before its connection, and that before its session.
    WinHttpHandle session_;
    WinHttpHandle connection_;
    WinHttpHandle request_;
    WinHttpError error_;
};

}  // namespace intake
