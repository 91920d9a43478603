#pragma once

#include <string>

#include "formats/source/EndMark.h"
#include "platform/linux/curl/CurlConnections.h"

namespace intake {

/// A page as it comes from where it is.
struct PageSource {
    std::string bytes;
    std::string charset;  // what the transport says of it; may be empty
};

/// Fetches an http, https or ftp URL, or reads the file of a file URL or path. False, and the
/// reason, when the page cannot be had; throws html::PageError for one of more than
/// 100 MB.
bool readPageSource(const std::string& source, CurlConnections& connections, const EndMark& endMark,
                    PageSource& page, std::string& reason);

}  // namespace intake
