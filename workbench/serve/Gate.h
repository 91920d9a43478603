#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "workbench/serve/WebMessage.h"

namespace serve {

/// Lets in who opened the address that was printed at the start, and keeps out what other pages in
/// the same browser, or other users of the machine, send. Any thread.
class Gate {
public:
    /// `session`: the secret of the cookie.
    Gate(uint16_t port, std::string session);

    /// The secret that stands in the address, to be swapped for a cookie. Another for each gate.
    const std::string& token() const { return token_; }

    /// Why a request is refused; nothing when it may pass. `isUpgrade`: it asks for a WebSocket.
    std::optional<WebResponse> refusal(const WebRequest& request, bool isUpgrade) const;

    /// Whether it is the one that brings the token. It needs no cookie.
    static bool isLogin(const WebRequest& request);

    /// The answer to a token: a cookie, or 401.
    WebResponse logIn(const std::string& token) const;

private:
    bool isOurHost(const std::string& host) const;
    bool hasCookie(const std::string& cookies) const;

    const std::string port_;
    const std::string token_;
    const std::string session_;
};

}  // namespace serve
