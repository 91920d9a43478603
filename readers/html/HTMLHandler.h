#pragma once

#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"
#include "platform/HtmlDocument.h"

namespace intake {

/// Reads tables of HTML pages: opens a page, finds one table by the request's selector and writes
/// its rows as result script. Owned by a worker and called on its thread.
class HTMLHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    HTMLHandler(ReaderLogger& logger, HtmlServices& services, KeptConnections& connections,
                const EndMark& endMark)
        : logger_(logger), services_(services), connections_(connections), endMark_(endMark) {}

    /// Throws PlatformError when a service fails in the middle of a step.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    std::unique_ptr<HtmlDocument> open(const RequestRecord& request, std::string& error);

    ReaderLogger& logger_;
    HtmlServices& services_;
    KeptConnections& connections_;
    const EndMark& endMark_;
};

}  // namespace intake
