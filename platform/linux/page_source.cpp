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

/// The tree of a page takes some ten times its size.
constexpr size_t MAX_MEGABYTES = 100;
constexpr size_t MAX_BYTES = MAX_MEGABYTES * 1000 * 1000;

constexpr std::array<const char*, 3> REMOTE_SCHEMES{"http://", "https://", "ftp://"};

bool hasScheme(const std::string& source, const std::string& scheme) {
    return strncasecmp(source.c_str(), scheme.c_str(), scheme.size()) == 0;
}

[[noreturn]] void refuseSize() {
    html::throwPageRefused("The page is larger than " + std::to_string(MAX_MEGABYTES) + " MB");
}

bool fetch(const std::string& url, const EndMark& endMark, PageSource& page, std::string& reason) {
    CurlPageRequest request(endMark, MAX_BYTES);
    const bool isFetched = request.fetch(url, reason);
    if (request.isTooLarge()) {
        refuseSize();
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
        if (size > MAX_BYTES) {
            refuseSize();
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
