#pragma once

#include "platform/HtmlDocument.h"
#include "platform/windows/com/ComFactory.h"
// Builds on COM's headers.
#include <urlmon.h>

namespace intake {

/// Pages by urlmon and MSHTML, on threads where COM is initialised. Nothing that blocks gives up
/// early; it ends with its thread.
class MshtmlServices final : public HtmlServices {
public:
    /// Opens a URL or a local path: URLOpenBlockingStreamA, or what a test puts in its place.
    using OpenStream =
        std::function<HRESULT(IUnknown*, const char*, IStream**, DWORD, IBindStatusCallback*)>;

    explicit MshtmlServices(ComFactory create = CoCreateInstance,
                            OpenStream openStream = URLOpenBlockingStreamA)
        : create_(std::move(create)), openStream_(std::move(openStream)) {}

    std::unique_ptr<HtmlDocument> open(const std::string& source, KeptConnections& connections,
                                       const EndMark& endMark, std::string& reason) override;

private:
    const ComFactory create_;
    const OpenStream openStream_;
};

}  // namespace intake
