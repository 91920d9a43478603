#pragma once

#include <string>

#include "pipeline/RDR_FILE.h"
#include "pipeline/RDR_HTTP.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"

namespace intake {

/// Reads JSON documents: fetches a source, selects nodes by the request's path and writes them as
/// result script. Owned by a worker and called on its thread.
class JSONHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    JSONHandler(ReaderLogger& logger, Files& files, HttpClient& client, Diagnostics& diagnostics)
        : logger_(logger), file_(files, diagnostics), http_(client, logger, diagnostics) {}

    /// A local file that cannot be read leaves `error` as it is: the reason went to the debugger's
    /// output.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    /// Reads the source into `text`, with a zero byte behind it.
    bool fetch(const RequestRecord& request, ByteBuffer& text, std::string& error);
    bool fetchUrl(const RequestRecord& request, ByteBuffer& text, std::string& error);

    ReaderLogger& logger_;
    RDR_FILE file_;
    RDR_HTTP http_;
};

}  // namespace intake
