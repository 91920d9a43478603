#include "workbench/probe/fetch/source_start.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "workbench/probe/fetch/fetch_file.h"
#include "workbench/probe/recognise.h"

namespace probe {

namespace {

/// Whether what stands behind the host's colon is no number: the start of a password, perhaps, that
/// holds a character which ends the host.
bool hasNoPort(std::string_view host) {
    const auto colon = host.find(':', host.find(']') + 1);
    return colon != std::string_view::npos &&
           !std::all_of(host.begin() + static_cast<std::ptrdiff_t>(colon) + 1, host.end(),
                        intake::isDigit);
}

}  // namespace

bool isUrl(std::string_view source) {
    constexpr std::array<std::string_view, 3> schemes{"http://", "https://", "ftp://"};
    return std::any_of(schemes.begin(), schemes.end(), [source](std::string_view scheme) {
        return intake::startsWithIgnoringCase(source, scheme);
    });
}

std::string withoutUserInfo(std::string_view source) {
    constexpr std::string_view schemeEnd = "://";
    const auto scheme = source.find(schemeEnd);
    if (scheme == std::string_view::npos) return std::string(source);
    const auto host = scheme + schemeEnd.size();
    const auto hostEnd = std::min(source.find_first_of("/?#", host), source.size());
    const bool isCutPassword = hasNoPort(source.substr(host, hostEnd - host));
    const auto at = (isCutPassword ? source : source.substr(0, hostEnd)).rfind('@');
    if (at == std::string_view::npos || at < host) return std::string(source);
    return std::string(source.substr(0, host)) + "••••" + std::string(source.substr(at));
}

std::string startOfFile(const std::string& file) {
    std::ifstream stream = openedFile(file);
    std::string start(recognisableBytes, '\0');
    stream.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(stream.gcount()));
    return start;
}

}  // namespace probe
