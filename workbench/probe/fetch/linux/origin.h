#pragma once

#include <string>

namespace probe {

/// Who answers at an address.
struct Origin {
    std::string scheme;  // in lower case, like the host
    std::string host;
    std::string port;

    bool operator==(const Origin&) const = default;

    std::string server() const { return port.empty() ? host : host + ":" + port; }
};

/// Of a URL, or of a proxy, which may be given without a scheme; empty for what is none.
Origin originOf(const std::string& url);

/// A URL without a user's name and password; the library writes there also those that it was given
/// apart from it.
std::string withoutUser(const std::string& url);

/// Whether what is told to the one URL, such as a password, may be told to the other: they have the
/// same origin, or the way leads from http on port 80 to https on port 443 of the same host.
bool mayBeToldToo(const std::string& one, const std::string& other);

}  // namespace probe
