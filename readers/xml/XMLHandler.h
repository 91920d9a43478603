#pragma once

#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"
#include "platform/XmlDocument.h"

namespace intake {

/// Reads XML documents: loads a file or a URL, selects nodes by XPath and writes them as result
/// script. Owned by a worker and called on its thread.
class XMLHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    XMLHandler(ReaderLogger& logger, XmlServices& services, const EndMark& endMark)
        : logger_(logger), services_(services), endMark_(endMark) {}

    /// Throws PlatformError when a service fails in the middle of a step.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    using Document = std::unique_ptr<XmlDocument>;

    bool readDocument(const RequestRecord& request, std::string& script, std::string& error);
    bool loadFile(const RequestRecord& request, Document& document, std::string& error);
    bool loadUrl(const RequestRecord& request, Document& document, std::string& error);
    bool fetch(const RequestRecord& request, XmlRequest& http, XmlDocument& document,
               std::string& error);
    bool convertPayload(const RequestRecord& request, Document& document, std::string& error);
    bool select(const RequestRecord& request, XmlDocument& document, std::string& error);
    void trace(const char* step);

    ReaderLogger& logger_;
    XmlServices& services_;
    const EndMark& endMark_;
};

}  // namespace intake
