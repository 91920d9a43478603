#include "platform/linux/curl/origin.h"

#include <string>

#include "formats/text/ascii.h"
#include "platform/linux/curl/curl_handles.h"

namespace intake {

namespace {

struct Origin {
    std::string scheme, host, port;  // the scheme and the host in lower case

    bool operator==(const Origin&) const = default;
};

Origin originOf(const char* url) {
    const CurlUrl parsed(curl_url());
    curl_url_set(parsed.get(), CURLUPART_URL, url, 0);
    const auto part = [&](CURLUPart name) {
        const CurlText text = partOf(parsed, name, CURLU_DEFAULT_PORT);
        return text == nullptr ? std::string() : lowerCase(text.get());
    };
    return {part(CURLUPART_SCHEME), part(CURLUPART_HOST), part(CURLUPART_PORT)};
}

}  // namespace

bool mayBeToldToo(const char* one, const char* other) {
    const Origin from = originOf(one), to = originOf(other);
    return !from.host.empty() && (from == to || (from == Origin{"http", to.host, "80"} &&
                                                 to == Origin{"https", from.host, "443"}));
}

}  // namespace intake
