#include "workbench/probe/fetch/linux/origin.h"

#include "formats/text/ascii.h"
#include "workbench/probe/fetch/linux/ParsedUrl.h"

namespace probe {

Origin originOf(const std::string& url) {
    ParsedUrl parsed;
    parsed.parse(url, CURLU_GUESS_SCHEME | CURLU_NON_SUPPORT_SCHEME);
    const auto part = [&](CURLUPart name) {
        return intake::lowerCase(parsed.part(name, CURLU_DEFAULT_PORT));
    };
    return {part(CURLUPART_SCHEME), part(CURLUPART_HOST), part(CURLUPART_PORT)};
}

std::string withoutUser(const std::string& url) {
    ParsedUrl parsed;
    parsed.parse(url, CURLU_PATH_AS_IS);
    for (const CURLUPart part : {CURLUPART_USER, CURLUPART_PASSWORD})
        parsed.remove(part);
    return parsed.part(CURLUPART_URL);
}

bool mayBeToldToo(const std::string& one, const std::string& other) {
    const Origin from = originOf(one), to = originOf(other);
    return !from.host.empty() && (from == to || (from == Origin{"http", to.host, "80"} &&
                                                 to == Origin{"https", from.host, "443"}));
}

}  // namespace probe
