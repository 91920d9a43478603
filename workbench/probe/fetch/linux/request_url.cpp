#include "workbench/probe/fetch/linux/request_url.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "formats/text/trim.h"
#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/linux/ParsedUrl.h"
#include "workbench/probe/fetch/linux/transfer_reasons.h"

namespace probe {

namespace {

[[noreturn]] void refuse(const std::string& words, const std::string& next,
                         Proposal proposal = {}) {
    throw FetchFailure(FetchFailure::Stage::Address, words, next, std::move(proposal));
}

[[noreturn]] void refusePort() {
    refuse("has a port that is no number from 0 to 65535",
           "Correct the port in \"File Name\" (filename), or leave it out with its colon.");
}

/// With a number, unless the address has a question mark already.
std::string unique(const std::string& url, const char* number) {
    return url.find('?') == std::string::npos ? url + "?q=" + number : url;
}

/// The number that a text begins with, behind white space and a sign.
std::string portOf(std::string_view text) {
    text = intake::trimmedStart(text, " \t\n\v\f\r");
    text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    long port = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), port);
    if (parsed.ec != std::errc{} || port < 0 || port > std::numeric_limits<uint16_t>::max())
        refusePort();
    return std::to_string(port);
}

std::string escaped(std::string_view path) {
    constexpr std::string_view hex = "0123456789ABCDEF", unsafe = "\"<>\\^`{|}";
    std::string escaped;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        constexpr unsigned char lastPrintable = 0x7E;
        if (byte > ' ' && byte <= lastPrintable && unsafe.find(character) == std::string_view::npos)
            escaped += character;
        else
            escaped += {'%', hex[byte >> 4U], hex[byte & 0xFU]};
    }
    return escaped;
}

/// What stands behind the first colon is the port, whatever it is; so a user's name and password
/// cannot be told.
void refuseUser(const std::string& url, std::size_t hostStart, std::string_view authority) {
    const auto at = authority.rfind('@');
    if (at == std::string_view::npos || authority.find(':') > at) return;
    refuse("holds a user's name and password, which are not read there for JSON",
           "Take them out of \"File Name\" (filename), and set \"Use Authentication\" (useAuth), "
           "\"User Name\" (userName) and \"Password\" (password).",
           {{"filename", url.substr(0, hostStart) + url.substr(hostStart + at + 1)}});
}

std::string urlForJson(const Settings& settings) {
    const std::string url = unique(settings.filename, "34464");
    const auto hostStart = url.find("//") + 2;
    const auto hostEnd = std::min(url.find_first_of("/?", hostStart), url.size());
    const bool isSecure = std::string_view(url).substr(0, hostStart).ends_with("https://");
    const std::string authority = url.substr(hostStart, hostEnd - hostStart);
    refuseUser(settings.filename, hostStart, authority);
    // The colons of a numeric IPv6 host stand within brackets.
    const auto colon = authority.find(':', authority.find(']') + 1);
    const std::string port =
        colon == std::string::npos ? isSecure ? "443" : "80" : portOf(authority.substr(colon + 1));
    const std::string path = url.substr(hostEnd);
    return (isSecure ? "https://" : "http://") + authority.substr(0, colon) + ":" + port +
           (path.starts_with('/') ? "" : "/") + escaped(path);
}

/// The scheme of XML has to be in lower case and at the start.
std::string urlForXml(const Settings& settings) {
    const std::string& name = settings.filename;
    return settings.avoidCache && name.find("ftp://") == std::string::npos ? unique(name, "0")
                                                                           : name;
}

/// A proposal to take the blanks away from around the name, when there are some.
Proposal withoutBlanks(const std::string& name) {
    const std::string trimmed(intake::trimmed(name, intake::XML_SPACE));
    return trimmed == name ? Proposal{} : Proposal{{"filename", trimmed}};
}

std::string checked(const std::string& url, unsigned flags, const Settings& settings) {
    ParsedUrl parsed;
    const CURLUcode code = parsed.parse(url, flags);
    if (code == CURLUE_BAD_PORT_NUMBER) refusePort();
    const Reason& malformed = reasonOf(CURLE_URL_MALFORMAT);
    if (code != CURLUE_OK)
        refuse(malformed.words, malformed.next, withoutBlanks(settings.filename));
    return parsed.part(CURLUPART_URL);
}

}  // namespace

std::string requestUrl(const Settings& settings) {
    switch (settings.queryMode) {
        case QueryType::Json:
            return checked(urlForJson(settings), CURLU_PATH_AS_IS, settings);
        case QueryType::Html:
            return checked(settings.filename, CURLU_URLENCODE, settings);
        default:
            return checked(urlForXml(settings), CURLU_URLENCODE | CURLU_PATH_AS_IS, settings);
    }
}

}  // namespace probe
