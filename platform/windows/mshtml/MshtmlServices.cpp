#include "platform/windows/mshtml/MshtmlServices.h"

#include "platform/windows/mshtml/MshtmlDocument.h"
#include "platform/windows/mshtml/read_stream.h"
#include "platform/windows/mshtml/urlmon_errors.h"

namespace intake {

std::unique_ptr<HtmlDocument> MshtmlServices::open(const std::string& source, KeptConnections&,
                                                   const EndMark&, std::string& reason) {
    ComPointer<IStream> stream;
    const HRESULT result = openStream_(nullptr, source.c_str(), stream.out(), 0, nullptr);
    if (!succeeded(result)) {
        reason = urlmonMeaning(result);
        return nullptr;
    }
    const std::string content = readStream(stream);
    ComPointer<IHTMLDocument2> object;
    checkCom(create_(CLSID_HTML_DOCUMENT, nullptr, CLSCTX_INPROC_SERVER, IID_HTML_DOCUMENT_2,
                     object.outAny()));
    auto document = std::make_unique<MshtmlDocument>(std::move(object));
    document->write(content);
    return document;
}

}  // namespace intake
