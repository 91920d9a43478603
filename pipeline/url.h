#pragma once

#include <string>

#include "platform/HttpClient.h"

namespace intake {

/// Splits an HTTP or HTTPS URL. The port comes from the URL, else from the scheme. Throws
/// std::invalid_argument or std::out_of_range for a port that is no port number.
HttpAddress splitUrl(const std::string& url);

/// Whether a source is fetched over HTTP or HTTPS: the scheme may stand anywhere in it.
bool isHttpUrl(const std::string& source);

}  // namespace intake
