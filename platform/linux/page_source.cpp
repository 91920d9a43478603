#include "platform/linux/page_source.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <system_error>

#include "platform/linux/CurlPageRequest.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/html/page_errors.h"

namespace intake {

namespace {

constexpr std::array<const char*, 3> REMOTE_SCHEMES{"http://", "https://", "ftp://"};

bool hasScheme(const std::string& source, const std::string& scheme) {
    return strncasecmp(source.c_str(), scheme.c_str(), scheme.size()) == 0;
}

bool fetch(const std::string& url, const EndMark& endMark, PageSource& page, std::string& reason) {
    CurlPageRequest request(endMark, html::MAX_PAGE_BYTES);
    const bool isFetched = request.fetch(url, reason);
    if (request.isTooLarge()) {
        html::throwPageTooLarge();
    }
    page.bytes = request.takeBody();
    page.charset = request.charset();
    return isFetched;
}

/// An open file, which is closed again.
class OpenFile {
public:
    explicit OpenFile(const std::string& path) : handle_(files_.open(path.c_str())) {}
    ~OpenFile() {
        if (isOpen()) {
            files_.close(handle_);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return handle_ != Files::INVALID; }
    bool readInto(std::string& bytes) {
        uint64_t size = 0;
        if (!files_.size(handle_, size)) {
            return false;
        }
        if (size > html::MAX_PAGE_BYTES) {
            html::throwPageTooLarge();
        }
        bytes.resize(static_cast<size_t>(size));
        size_t bytesRead = 0;
        const bool isRead = files_.read(handle_, bytes.data(), bytes.size(), bytesRead);
        bytes.resize(bytesRead);
        return isRead;
    }

private:
    LinuxFiles files_;
    Files::Handle handle_;
};

bool readFile(const std::string& path, PageSource& page, std::string& reason) {
    OpenFile file(path);
    if (!file.isOpen() || !file.readInto(page.bytes)) {
        reason = std::system_category().message(errno);
        return false;
    }
    return true;
}

/// The path of a file URL; empty when it is malformed.
std::string pathOf(const std::string& fileUrl) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
    char* path = nullptr;
    std::string result;
    if (curl_url_set(url.get(), CURLUPART_URL, fileUrl.c_str(), CURLU_URLENCODE) == CURLUE_OK &&
        curl_url_get(url.get(), CURLUPART_PATH, &path, CURLU_URLDECODE) == CURLUE_OK) {
        result = path;
    }
    curl_free(path);
    return result;
}

}  // namespace

bool readPageSource(const std::string& source, const EndMark& endMark, PageSource& page,
                    std::string& reason) {
    if (std::any_of(REMOTE_SCHEMES.begin(), REMOTE_SCHEMES.end(),
                    [&](const char* scheme) { return hasScheme(source, scheme); })) {
        return fetch(source, endMark, page, reason);
    }
    return readFile(hasScheme(source, "file:") ? pathOf(source) : source, page, reason);
}

}  // namespace intake
