#include "pipeline/url.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "formats/text/trim.h"

namespace intake {

namespace {

constexpr uint16_t HTTP_PORT = 80;
constexpr uint16_t HTTPS_PORT = 443;

/// The number that a text begins with, behind white space and a sign.
uint16_t toPort(std::string_view text) {
    text = trimmedStart(text, " \t\n\v\f\r");
    text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    long port = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), port);
    if (parsed.ec == std::errc::invalid_argument) {
        throw std::invalid_argument("invalid stoi argument");
    }
    if (parsed.ec != std::errc{} || port < 0 || port > std::numeric_limits<uint16_t>::max()) {
        throw std::out_of_range("stoi argument out of range");
    }
    return static_cast<uint16_t>(port);
}

}  // namespace

HttpAddress splitUrl(const std::string& url) {
    const size_t slashes = url.find("//");
    const size_t hostStart = slashes == std::string::npos ? 0 : slashes + 2;
    const size_t hostEnd = std::min(url.find_first_of("/?", hostStart), url.size());

    HttpAddress address;
    address.secure = std::string_view(url).substr(0, hostStart).ends_with("https://");
    address.port = address.secure ? HTTPS_PORT : HTTP_PORT;
    address.host = url.substr(hostStart, hostEnd - hostStart);
    address.path = url.substr(hostEnd);
    if (!address.path.starts_with('/')) {
        address.path.insert(0, 1, '/');
    }
    // The colons of a numeric IPv6 host stand within brackets.
    const size_t colon = address.host.find(':', address.host.find(']') + 1);
    if (colon != std::string::npos) {
        address.port = toPort(std::string_view(address.host).substr(colon + 1));
        address.host.resize(colon);
    }
    return address;
}

bool isHttpUrl(const std::string& source) {
    return source.find("http://") != std::string::npos ||
           source.find("https://") != std::string::npos;
}

}  // namespace intake
