#include "workbench/probe/fetch/fetch_source.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "formats/html/PageError.h"
#include "formats/text/ascii.h"
#include "workbench/probe/fetch/Fetched.h"

namespace probe {

namespace {

struct Size {
    std::size_t bytes;
    const char* words;
};
constexpr Size noAddress{0, ""};
constexpr Size twoGigabytes{0x7FFFFFFF, "2 GB"};
constexpr Size fourGibibytes{(std::size_t{1} << 32U) - 1, "4 GiB"};
constexpr Size oneGibibyte{std::size_t{1} << 30U, "1 GiB"};
constexpr Size largestPage{intake::html::MAX_PAGE_BYTES, "100 MB"};

/// How a query type takes the name of a source.
struct Reading {
    const char* kind;
    bool readsHttp;
    bool readsFtp;
    bool readsFileUrls;
    bool isStrict;  // schemes are in lower case, and may stand anywhere in the name
    Size mostOfUrl;
    Size mostOfFile;
};

/// In the order of QueryType.
constexpr std::array readings{
    Reading{"workbooks", false, false, false, true, noAddress, twoGigabytes},
    Reading{"databases", false, false, false, true, noAddress, twoGigabytes},
    Reading{"XML", true, true, false, true, twoGigabytes, twoGigabytes},
    Reading{"JSON", true, false, false, true, oneGibibyte, fourGibibytes},
    Reading{"HTML", true, true, true, false, largestPage, largestPage},
};

constexpr std::string_view schemeEnd = "://";
constexpr const char* fileName = "\"File Name\" (filename)";

[[noreturn]] void refuse(const std::string& words, const std::string& next,
                         Proposal proposal = {}) {
    throw FetchFailure(FetchFailure::Stage::Address, words, next, std::move(proposal));
}

bool reads(const Reading& reading, std::string_view scheme) {
    return scheme == "ftp://" ? reading.readsFtp
                              : reading.readsHttp && (scheme == "http://" || scheme == "https://");
}

bool isAddress(const Reading& reading, const std::string& name) {
    constexpr std::array<std::string_view, 3> schemes{"http://", "https://", "ftp://"};
    return std::any_of(schemes.begin(), schemes.end(), [&](std::string_view scheme) {
        return reads(reading, scheme) &&
               (reading.isStrict ? name.find(scheme) != std::string::npos
                                 : intake::startsWithIgnoringCase(name, scheme));
    });
}

/// What a name begins with that looks like an address: "http://"; empty for any other.
std::string_view schemeOf(std::string_view name) {
    const auto end = name.find(schemeEnd);
    constexpr std::size_t shortest = 2;  // one letter is a drive
    const bool isScheme =
        end != std::string_view::npos && end >= shortest &&
        std::all_of(name.begin(), name.begin() + static_cast<long>(end), intake::isLetter);
    return isScheme ? name.substr(0, end + schemeEnd.size()) : "";
}

char hexDigit(char c) {
    return static_cast<char>(intake::isDigit(c) ? c - '0' : intake::toLower(c) - 'a' + 10);
}

bool isHexDigit(char c) {
    return intake::isDigit(c) || (intake::toLower(c) >= 'a' && intake::toLower(c) <= 'f');
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) &&
                              isHexDigit(text[i + 2]);
        plain += isEscape ? static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]))
                          : text[i];
        i += isEscape ? 2 : 0;
    }
    return plain;
}

/// The path of a URL such as file:///data/a.xml, also of one that names a drive.
std::string pathOf(std::string_view fileUrl) {
    fileUrl.remove_prefix(std::string_view("file:").size());
    if (fileUrl.starts_with("//")) {
        fileUrl.remove_prefix(2);
        fileUrl.remove_prefix(std::min(fileUrl.find('/'), fileUrl.size()));
    }
    constexpr std::size_t driveColon = 2;
    if (fileUrl.size() > driveColon && fileUrl[driveColon] == ':') fileUrl.remove_prefix(1);
    return unescaped(fileUrl);
}

[[noreturn]] void refuseFileUrl(const Reading& reading, const std::string& name) {
    const std::string path = pathOf(name);
    std::error_code error;
    const bool isThere = std::filesystem::exists(path, error);
    refuse(std::string("is a file given as an address, which is not read for ") + reading.kind,
           std::string("Set ") + fileName + " to the path alone: " + path + ".",
           isThere ? Proposal{{"filename", path}} : Proposal{});
}

[[noreturn]] void refuseAddress(const Reading& reading, const std::string& name,
                                const std::string& scheme) {
    const std::string lower = intake::lowerCase(scheme);
    if (reads(reading, lower))
        refuse("is taken for a file, because " + scheme + " is not in lower case",
               std::string("Begin ") + fileName + " with " + lower + ".",
               {{"filename", lower + name.substr(scheme.size())}});
    if (lower == "ftp://")
        refuse(std::string("is an FTP address, which is read for XML and HTML only, not for ") +
                   reading.kind,
               std::string("Copy the file to this machine, and set ") + fileName + " to its path.");
    if (lower == "http://" || lower == "https://")
        refuse(
            std::string("is an address on the web; ") + reading.kind + " are read from files only",
            std::string("Save it on this machine, and set ") + fileName +
                " to its path. For data from the web choose another \"Query type\" (queryMode).");
    refuse("begins with " + scheme + ", which is nothing that can be fetched",
           std::string("Begin ") + fileName + " with http:// or https://, or set it to a path.");
}

}  // namespace

Source sourceOf(const Settings& settings) {
    const Reading& reading = readings[static_cast<std::size_t>(settings.queryMode)];
    const std::string& name = settings.filename;
    const auto source = [](bool isUrl, const std::string& place, const Size& most) {
        return Source{isUrl, place, most.bytes, most.words};
    };
    if (name.empty())
        refuse("is not named", std::string("Set ") + fileName + " to a path or an address.");
    if (isAddress(reading, name)) return source(true, name, reading.mostOfUrl);
    if (intake::startsWithIgnoringCase(name, "file:")) {
        if (!reading.readsFileUrls) refuseFileUrl(reading, name);
        return source(false, pathOf(name), reading.mostOfFile);
    }
    const std::string scheme(schemeOf(name));
    if (!scheme.empty()) refuseAddress(reading, name, scheme);
    return source(false, name, reading.mostOfFile);
}

}  // namespace probe
