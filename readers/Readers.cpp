#include "readers/Readers.h"

#include "readers/asks_alike.h"

namespace intake {

Readers::Readers(const Platform& platform, ReaderLogger& logger, const EndMark& endMark)
    : connections_(platform.http.keepConnections()),
      http_(platform.http.create(*connections_, endMark)),
      html_(logger, platform.html, *connections_, endMark),
      json_(logger, platform.files, *http_, platform.diagnostics),
      sql_(logger, platform.databases, endMark),
      xml_(logger, platform.xml, *connections_, endMark) {}

bool Readers::Read(const RequestRecord& request, std::string& script, std::string& error) {
    keepConnectionsFor(request);
    return readerFor(request.mode).Read(request, script, error);
}

void Readers::rest() {
    connections_->close();
}

/// What was said over a connection, such as a password, is for its server, and what the server
/// answers later may depend on it: they stay only for who asks the same server as the same user.
void Readers::keepConnectionsFor(const RequestRecord& request) {
    if (!asksAlike(request, lastRequest_)) {
        connections_->close();
    }
    lastRequest_ = request;
}

ReaderHandler& Readers::readerFor(const std::string& mode) {
    if (mode == "SQL") {
        return sql_;
    }
    if (mode == "HTML") {
        return html_;
    }
    if (mode == "JSON") {
        return json_;
    }
    return xml_;
}

ReaderMaker makerOfReaders(const Platform& platform) {
    return [&platform](ReaderLogger& logger, const EndMark& endMark) {
        return std::make_unique<Readers>(platform, logger, endMark);
    };
}

}  // namespace intake
