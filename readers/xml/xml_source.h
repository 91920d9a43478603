#pragma once

#include <string>
#include <vector>

#include "pipeline/RequestRecord.h"

namespace intake {

struct Header {
    std::string name, value;
};

/// Whether a source is fetched over HTTP, HTTPS or FTP; anything else is a local path.
bool isRemote(const std::string& source);

/// Whether the source is a payload document; any other is plain XML.
bool isPayload(const RequestRecord& request);

/// The URL to ask for: with a unique query part when an HTTP source is to bypass caches and has no
/// query part of its own. Any thread; the number comes from a counter of the process.
std::string requestUrl(const RequestRecord& request);

/// The headers to send, in order; an FTP source has none.
std::vector<Header> requestHeaders(const RequestRecord& request);

}  // namespace intake
