#include "workbench/cli/secret_places.h"

#include <algorithm>
#include <array>
#include <utility>

#include "formats/connection/connection_string.h"
#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace workbench {

namespace {

using Places = std::vector<SecretPlace>;

Places whole(const std::string& text) {
    return {{0, text.size(), {text}, {}}};
}

/// The user and the password before the host, which begins at `host`.
Places inHost(const std::string& address, std::size_t host) {
    const auto end = std::min(address.find_first_of("/?#", host), address.size());
    const auto at = address.rfind('@', end);
    if (at == std::string::npos || at < host) return {};
    const std::string user = address.substr(host, at - host);
    return {{host, user.size(), {user, user.substr(user.find(':') + 1)}, {}}};
}

Places inAddress(const std::string& address) {
    const auto scheme = address.find("://");
    return scheme == std::string::npos ? Places() : inHost(address, scheme + 3);
}

/// That of a proxy needs no scheme.
Places inProxyAddress(const std::string& address) {
    const auto scheme = address.find("://");
    return inHost(address, scheme == std::string::npos ? 0 : scheme + 3);
}

/// Drivers and providers have longer names for some, such as "Jet OLEDB:Database Password".
bool isSecretKey(std::string_view key) {
    return std::ranges::any_of(std::array{"Pwd", "Password"}, [key](std::string_view end) {
        return key.size() >= end.size() &&
               intake::equalIgnoringCase(key.substr(key.size() - end.size()), end);
    });
}

using intake::ConnectionString;
using Parse = ConnectionString (*)(std::string_view text);

Places inProperties(const std::string& text, Parse parse);

/// Those of a list within a property that begins at `begin`; all of it where its value is written
/// otherwise than it is read.
Places inList(const intake::ConnectionProperty& property, std::size_t begin) {
    Places places = inProperties(property.value, ConnectionString::parseExtendedProperties);
    const auto value = property.written.find(property.value);
    if (value != std::string::npos) {
        for (SecretPlace& each : places)
            each.begin += begin + value;
        return places;
    }
    SecretPlace all{begin, property.written.size(), {}, {}};
    for (const SecretPlace& each : places)
        all.forms.insert(all.forms.end(), each.forms.begin(), each.forms.end());
    return all.forms.empty() ? Places() : Places{all};
}

Places inProperties(const std::string& text, Parse parse) {
    try {
        Places places;
        std::size_t at = 0;
        const ConnectionString connection = parse(text);
        for (const intake::ConnectionProperty& each : connection.properties()) {
            at = text.find(each.key, at) + each.key.size();
            if (each.written.empty()) continue;
            at = text.find(each.written, text.find('=', at) + 1);
            const bool isList = intake::equalIgnoringCase(each.key, "Extended Properties") &&
                                each.value.find('=') != std::string::npos;
            if (isSecretKey(each.key))
                places.push_back({at, each.written.size(), {each.value, each.written}, {}});
            const Places inner = isList ? inList(each, at) : Places();
            places.insert(places.end(), inner.begin(), inner.end());
            at += each.written.size();
        }
        return places;
    } catch (const intake::ConnectionStringError&) {
        return whole(text);
    }
}

Places inConnection(const std::string& text) {
    return inProperties(text, ConnectionString::parse);
}

SecretPlace inHeader(const std::string& value, std::size_t begin) {
    const auto colon = std::min(value.find(':'), value.size());
    const bool isAddress = value.compare(colon, 3, "://") == 0;
    const auto first = intake::trimmed(std::string_view(value).substr(0, colon), " \t");
    return {begin, value.size(), {value}, isAddress ? "" : std::string(first)};
}

struct HeaderLine {
    std::string name;
    std::string value;
    std::size_t begin = 0;  // of the value
};

std::vector<HeaderLine> headerLines(std::string_view text) {
    std::vector<HeaderLine> lines;
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find_first_of("\r\n", start), text.size());
        const auto colon = text.find(':', start);
        if (colon < end) {
            const auto name = intake::trimmed(text.substr(start, colon - start), " \t");
            const auto value = intake::trimmed(text.substr(0, end).substr(colon + 1), " \t");
            lines.push_back({std::string(name), std::string(value), text.find(value, colon + 1)});
        }
        start = end + 1;
    }
    return lines;
}

Places inHeaders(const std::string& text) {
    Places places;
    for (const HeaderLine& line : headerLines(text))
        places.push_back(inHeader(line.value, line.begin));
    return places;
}

struct Row {
    const char* parameter;
    Places (*placesIn)(const std::string& text);
};
constexpr std::array rows{
    Row{"filename", inAddress}, Row{"proxyUrl", inProxyAddress}, Row{"connStr", inConnection},
    Row{"password", whole},     Row{"customHeaders", inHeaders}, Row{"proxyPwd", whole},
};

}  // namespace

std::vector<SecretPlace> secretPlaces(std::string_view parameter, const std::string& text) {
    const auto* const row = std::find_if(
        rows.begin(), rows.end(), [&](const Row& each) { return parameter == each.parameter; });
    if (row == rows.end()) return {};
    Places places = row->placesIn(text);
    std::erase_if(places, [](const SecretPlace& each) { return each.length == 0; });
    return places;
}

std::vector<std::string> headerNames(std::string_view text) {
    std::vector<std::string> names;
    for (HeaderLine& line : headerLines(text))
        names.push_back(std::move(line.name));
    return names;
}

}  // namespace workbench
