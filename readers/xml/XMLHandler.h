#pragma once

#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"
#include "platform/XmlDocument.h"
#include "readers/xml/XmlRecords.h"

namespace intake {

/// Reads XML documents: loads a file or a URL, selects nodes by XPath and writes them as result
/// script. Owned by a worker and called on its thread.
class XMLHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    XMLHandler(ReaderLogger& logger, XmlServices& services, KeptConnections& connections,
               const EndMark& endMark)
        : logger_(logger), services_(services), connections_(connections), endMark_(endMark) {}

    /// Throws PlatformError when a service fails in the middle of a step.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    /// One request on its way.
    struct Load {
        const RequestRecord& request;
        std::string& script;
        std::string& error;
        std::unique_ptr<XmlDocument> document;
        std::unique_ptr<XmlRecords> records;  // of that document
    };

    bool readDocument(const RequestRecord& request, std::string& script, std::string& error);
    void makeRecords(Load& load);
    bool loadFile(Load& load);
    bool loadUrl(Load& load);
    bool fetch(Load& load, XmlRequest& http);
    bool convertPayload(Load& load);
    bool select(Load& load);
    void trace(const char* step);

    ReaderLogger& logger_;
    XmlServices& services_;
    KeptConnections& connections_;
    const EndMark& endMark_;
};

}  // namespace intake
