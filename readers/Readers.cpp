#include "readers/Readers.h"

namespace intake {

Readers::Readers(const Platform& platform, ReaderLogger& logger, const EndMark& endMark)
    : http_(platform.http.create(endMark)),
      html_(logger, platform.html, endMark),
      json_(logger, platform.files, *http_, platform.diagnostics),
      sql_(logger, platform.databases, endMark),
      xml_(logger, platform.xml, endMark) {}

bool Readers::Read(const RequestRecord& request, std::string& script, std::string& error) {
    return readerFor(request.mode).Read(request, script, error);
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
