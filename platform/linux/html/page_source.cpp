#include "platform/linux/html/page_source.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "formats/html/PageError.h"
#include "formats/text/ascii.h"
#include "platform/linux/base/RegularFile.h"
#include "platform/linux/curl/CurlPageRequest.h"

namespace intake {

namespace {

constexpr std::array<const char*, 3> REMOTE_SCHEMES{"http://", "https://", "ftp://"};

bool fetch(const std::string& url, CurlConnections& connections, const EndMark& endMark,
           PageSource& page, std::string& reason) {
    CurlPageRequest request(connections, endMark, html::MAX_PAGE_BYTES);
    const bool isFetched = request.fetch(url, reason);
    if (request.isTooLarge()) {
        html::throwPageTooLarge();
    }
    if (request.isBomb()) {
        throw html::PageError("The page unpacks to more than " +
                              std::to_string(ReceivedBody::HIGHEST_RATIO) + " times its size");
    }
    page.bytes = request.takeBody();
    page.charset = request.charset();
    return isFetched;
}

bool readFile(const std::string& path, PageSource& page, std::string& reason) {
    try {
        const RegularFile file(path);
        html::checkPageSize(file.size());
        page.bytes.resize(static_cast<size_t>(file.size()));
        page.bytes.resize(file.read(0, page.bytes.data(), page.bytes.size()));
        return true;
    } catch (const std::system_error& error) {
        reason = error.code().message();
        return false;
    }
}

/// The path of a file URL; empty when it is malformed.
std::string pathOf(const std::string& fileUrl) {
    const CurlUrl url(curl_url());
    curl_url_set(url.get(), CURLUPART_URL, fileUrl.c_str(), CURLU_URLENCODE);
    const CurlText path = partOf(url, CURLUPART_PATH, CURLU_URLDECODE);
    return path == nullptr ? "" : path.get();
}

}  // namespace

bool readPageSource(const std::string& source, CurlConnections& connections, const EndMark& endMark,
                    PageSource& page, std::string& reason) {
    if (std::any_of(REMOTE_SCHEMES.begin(), REMOTE_SCHEMES.end(),
                    [&](const char* scheme) { return startsWithIgnoringCase(source, scheme); })) {
        return fetch(source, connections, endMark, page, reason);
    }
    return readFile(startsWithIgnoringCase(source, "file:") ? pathOf(source) : source, page,
                    reason);
}

}  // namespace intake
