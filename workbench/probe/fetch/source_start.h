#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// With what a URL is asked for besides its address.
struct Request {
    std::string user;  // empty for none
    std::string password;
    std::vector<std::string> headers;  // lines such as "X-Key: 1"
};

/// Whether the source is an address rather than a file.
bool isUrl(std::string_view source);

/// The source without the user's name and password that an address may hold.
std::string withoutUserInfo(std::string_view source);

/// The first recognisableBytes of a file. Throws LookFailure.
std::string startOfFile(const std::string& file);

/// The first recognisableBytes of what stands behind an address, as far as they come within ten
/// seconds. Throws LookFailure, also when the server answers that it has nothing there.
std::string startOfUrl(const std::string& url, const Request& request);

}  // namespace probe
