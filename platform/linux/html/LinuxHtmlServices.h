#pragma once

#include "platform/HtmlDocument.h"

namespace intake {

/// Pages by way of libcurl or from local files, parsed by formats/html.
class LinuxHtmlServices final : public HtmlServices {
public:
    std::unique_ptr<HtmlDocument> open(const std::string& source, KeptConnections& connections,
                                       const EndMark& endMark, std::string& reason) override;
};

}  // namespace intake
