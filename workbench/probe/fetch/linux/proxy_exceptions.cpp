#include "workbench/probe/fetch/linux/proxy_exceptions.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>

#include "formats/text/ascii.h"

namespace probe {

namespace {

using Bits = std::string;  // '0' and '1', from the network's end on

/// Nothing for what is no address of the family.
std::optional<Bits> bitsOf(int family, const std::string& address) {
    std::array<unsigned char, sizeof(in6_addr)> bytes{};
    if (inet_pton(family, address.c_str(), bytes.data()) != 1) return std::nullopt;
    const std::size_t count = family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr);
    Bits bits;
    for (std::size_t bit = 0; bit < count * 8; ++bit)
        bits += (bytes.at(bit / 8) >> (7 - bit % 8) & 1) == 0 ? '0' : '1';
    return bits;
}

/// Of an address without a length, and of one of none, all bits count.
bool isInNetwork(int family, const Bits& host, std::string_view network) {
    const auto slash = std::min(network.find('/'), network.size());
    const auto bits = bitsOf(family, std::string(network.substr(0, slash)));
    std::size_t length = 0;
    if (slash < network.size())
        std::from_chars(network.data() + slash + 1, network.data() + network.size(), length);
    if (!bits || length > host.size()) return false;
    return host.starts_with(bits->substr(0, length == 0 ? host.size() : length));
}

bool isInDomain(const std::string& host, std::string_view domain) {
    if (domain.starts_with('.')) domain.remove_prefix(1);
    return !domain.empty() && ("." + host).ends_with("." + intake::lowerCase(domain));
}

bool isExceptedBy(std::string_view entry, const std::string& host) {
    const bool isInBrackets = host.starts_with('[') && host.ends_with(']');
    const std::string address = isInBrackets ? host.substr(1, host.size() - 2) : host;
    for (const int family : {AF_INET, AF_INET6}) {
        if (const auto bits = bitsOf(family, address)) return isInNetwork(family, *bits, entry);
    }
    return isInDomain(host, entry);
}

}  // namespace

bool isExcepted(const std::string& host, std::string_view list) {
    while (!list.empty()) {
        const std::string_view entry = list.substr(0, list.find(','));
        list.remove_prefix(std::min(entry.size() + 1, list.size()));
        if (isExceptedBy(entry, host)) return true;
    }
    return false;
}

}  // namespace probe
