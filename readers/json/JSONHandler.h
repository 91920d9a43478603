#pragma once

#include <memory>

#include "pipeline/RDR_FILE.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"

namespace intake {

/// Reads JSON documents: fetches a source, selects nodes by the request's path and writes them as
/// result script. Owned by a worker and called on its thread.
class JSONHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    JSONHandler(ReaderLogger& logger, Files& files, Diagnostics& diagnostics)
        : logger_(logger), file_(files, diagnostics) {}

    /// A local file that cannot be read leaves `error` as it is: the reason went to the debugger's
    /// output.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    bool fetch(const std::string& source, std::unique_ptr<char[]>& text, size_t& size,
               std::string& error);

    ReaderLogger& logger_;
    RDR_FILE file_;
};

}  // namespace intake
