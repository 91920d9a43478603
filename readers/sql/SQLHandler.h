#pragma once

#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"
#include "platform/Database.h"

namespace intake {

/// Reads databases, and worksheets as such: opens a connection, runs a query and writes its records
/// as result script. Owned by a worker and called on its thread.
class SQLHandler final : public ReaderHandler {
public:
    /// All are borrowed and outlive this object.
    SQLHandler(ReaderLogger& logger, DatabaseServices& databases, const EndMark& endMark)
        : logger_(logger), databases_(databases), endMark_(endMark) {}

    /// Throws PlatformError when a service fails in the middle of a step; whatever was opened is
    /// closed on every way out.
    bool Read(const RequestRecord& request, std::string& script, std::string& error) override;

private:
    bool open(const RequestRecord& request, Connection& connection, std::string& error);
    std::unique_ptr<Recordset> query(const RequestRecord& request, Connection& connection,
                                     std::string& error);

    ReaderLogger& logger_;
    DatabaseServices& databases_;
    const EndMark& endMark_;
};

}  // namespace intake
