#include "workbench/probe/source_start.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "formats/text/ascii.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/recognise.h"

namespace probe {

bool isUrl(std::string_view source) {
    constexpr std::array<std::string_view, 3> schemes{"http://", "https://", "ftp://"};
    return std::any_of(schemes.begin(), schemes.end(), [source](std::string_view scheme) {
        return intake::startsWithIgnoringCase(source, scheme);
    });
}

std::string withoutUserInfo(std::string_view source) {
    if (!isUrl(source)) return std::string(source);
    const auto host = source.find("://") + 3;
    const auto hostEnd = std::min(source.find_first_of("/?#", host), source.size());
    const auto at = source.substr(0, hostEnd).rfind('@');
    if (at == std::string_view::npos || at < host) return std::string(source);
    return std::string(source.substr(0, host)) + "••••" + std::string(source.substr(at));
}

std::string startOfFile(const std::string& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) {
        const auto place = std::filesystem::absolute(file, error);
        throw LookFailure("is not there; it was looked for as " + place.string());
    }
    if (std::filesystem::is_directory(status)) throw LookFailure("is a folder");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw LookFailure("cannot be opened; you may not be allowed to read it");
    std::string start(recognisableBytes, '\0');
    stream.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(stream.gcount()));
    return start;
}

}  // namespace probe
