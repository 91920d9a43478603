#pragma once

#include <memory>
#include <string>

#include "pipeline/ReaderHandler.h"
#include "platform/Platform.h"
#include "readers/html/HTMLHandler.h"
#include "readers/json/JSONHandler.h"
#include "readers/sql/SQLHandler.h"
#include "readers/xml/XMLHandler.h"

namespace intake {

/// The readers of one worker, one of each kind. Owned by the worker and called on its thread.
class Readers final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    Readers(const Platform& platform, ReaderLogger& logger, const EndMark& endMark);

    /// Reads by the reader of the request's mode; that of XML where the mode names none.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

    void rest() override;

private:
    ReaderHandler& readerFor(const std::string& mode);

    void keepConnectionsFor(const RequestRecord& request);

    const std::unique_ptr<KeptConnections> connections_;
    RequestRecord lastRequest_;
    const std::unique_ptr<HttpClient> http_;
    HTMLHandler html_;
    JSONHandler json_;
    SQLHandler sql_;
    XMLHandler xml_;
};

/// Makes each worker's Readers on this platform, which outlives them.
ReaderMaker makerOfReaders(const Platform& platform);

}  // namespace intake
