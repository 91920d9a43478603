#include "readers/xml/xml_source.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string_view>

#include "pipeline/url.h"

namespace intake {

namespace {

constexpr int32_t INPUT_PAYLOAD = 1;

std::atomic<uint32_t> uniqueQuery = 0;

/// Reads one `name: value` line; what stands behind a second colon is lost.
void addHeaderLine(std::string_view line, std::vector<Header>& headers) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
        return;
    }
    const std::string_view rest = line.substr(colon + 1);
    headers.push_back({std::string(line.substr(0, colon)),
                       std::string(rest.substr(0, rest.find_first_of(":\r")))});
}

void addCustomHeaders(std::string_view text, std::vector<Header>& headers) {
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        addHeaderLine(text.substr(start, end - start), headers);
        start = end + 1;
    }
}

}  // namespace

bool isRemote(const std::string& source) {
    return isHttpUrl(source) || source.find("ftp://") != std::string::npos;
}

bool isPayload(const RequestRecord& request) {
    return request.sourceInFormat == INPUT_PAYLOAD;
}

std::string requestUrl(const RequestRecord& request) {
    const bool unique = request.avoidCache && isHttpUrl(request.filename) &&
                        request.filename.find('?') == std::string::npos;
    return unique ? request.filename + "?q=" + std::to_string(uniqueQuery++) : request.filename;
}

std::vector<Header> requestHeaders(const RequestRecord& request) {
    std::vector<Header> headers;
    if (!isHttpUrl(request.filename)) {
        return headers;
    }
    if (request.avoidCache) {
        headers = {{"Cache-Control", "no-cache"},
                   {"Pragma", "no-cache"},
                   {"If-Modified-Since", "Sat, 1 Jan 2000 00:00:00 GMT"}};
    }
    if (request.useCustomHeaders != 0) {
        addCustomHeaders(request.customHeaders, headers);
    }
    return headers;
}

}  // namespace intake
