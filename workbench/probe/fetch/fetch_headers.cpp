#include "workbench/probe/fetch/fetch_headers.h"

#include <algorithm>
#include <string_view>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

namespace {

struct Header {
    std::string name;
    std::string value;
};
using Headers = std::vector<Header>;

std::vector<std::string_view> linesOf(std::string_view text, std::string_view ends) {
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find_first_of(ends, start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

auto findSame(Headers& headers, std::string_view name) {
    return std::find_if(headers.begin(), headers.end(), [name](const Header& each) {
        return intake::equalIgnoringCase(each.name, name);
    });
}

/// A later line replaces an earlier one; one without a colon ends them.
Headers headersForJson(const Settings& settings) {
    Headers headers{{"Accept", ""}};  // none is sent
    if (!settings.useCustomHeaders) return headers;
    for (const std::string_view line : linesOf(settings.customHeaders, "\r\n")) {
        const auto colon = line.find(':');
        if (line.empty()) continue;
        if (colon == std::string_view::npos) break;
        const std::string_view name = line.substr(0, colon);
        const auto same = findSame(headers, name);
        if (same != headers.end()) headers.erase(same);
        headers.push_back({std::string(name), std::string(line.substr(colon + 1))});
    }
    return headers;
}

bool isToken(std::string_view name) {
    constexpr std::string_view signs = "!#$%&'*+-.^_`|~";
    return !name.empty() && std::all_of(name.begin(), name.end(), [signs](char c) {
        return intake::isLetter(c) || intake::isDigit(c) || signs.find(c) != std::string_view::npos;
    });
}

/// Values of one name are joined, and end at their first colon; a line without one is left out.
void addForXml(std::string_view line, Headers& headers) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) return;
    const std::string_view rest = line.substr(colon + 1);
    const std::string_view name = intake::trimmed(line.substr(0, colon), intake::XML_SPACE);
    const std::string_view value =
        intake::trimmed(rest.substr(0, rest.find_first_of(":\r")), intake::XML_SPACE);
    if (!isToken(name))
        throw FetchFailure(FetchFailure::Stage::Address,
                           "is asked for with a custom header whose name cannot be sent",
                           "Correct the custom headers (customHeaders): one \"Name: value\" on a "
                           "line, with no blanks in the name.");
    const auto same = findSame(headers, name);
    if (same == headers.end())
        headers.push_back({std::string(name), std::string(value)});
    else
        same->value.append(", ").append(value);
}

Headers headersForXml(const Settings& settings) {
    if (settings.filename.find("http://") == std::string::npos &&
        settings.filename.find("https://") == std::string::npos)
        return {};
    Headers headers;
    if (settings.avoidCache)
        headers = {{"Cache-Control", "no-cache"},
                   {"Pragma", "no-cache"},
                   {"If-Modified-Since", "Sat, 1 Jan 2000 00:00:00 GMT"}};
    if (settings.useCustomHeaders)
        for (const std::string_view line : linesOf(settings.customHeaders, "\n"))
            addForXml(line, headers);
    return headers;
}

}  // namespace

std::vector<std::string> requestHeaders(const Settings& settings) {
    std::vector<std::string> lines;
    if (settings.queryMode == QueryType::Json)
        for (const Header& each : headersForJson(settings))
            lines.push_back(each.name + ":" + each.value);
    if (settings.queryMode == QueryType::Xml)
        for (const Header& each : headersForXml(settings))
            lines.push_back(each.value.empty() ? each.name + ";" : each.name + ": " + each.value);
    return lines;
}

}  // namespace probe
