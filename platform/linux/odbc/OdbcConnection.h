#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "formats/connection/connection_string.h"
#include "formats/source/EndMark.h"
#include "platform/linux/base/OpenConnection.h"
#include "platform/linux/odbc/OdbcDriver.h"
#include "platform/linux/odbc/OdbcSession.h"

namespace intake {

/// A connection by unixODBC and a driver that the user has installed. A server that does not answer
/// is given 15 seconds. The end mark ends an attempt to connect and a running query within a
/// fraction of a second, and a fetch before its next record.
class OdbcConnection final : public OpenConnection {
public:
    static constexpr std::chrono::seconds CONNECT_TIME{15};

    /// `connection` is of ADO. `endMark` outlives this object. Throws PlatformError and
    /// ConnectionStringError.
    OdbcConnection(const ConnectionString& connection, const EndMark& endMark,
                   std::chrono::milliseconds limit = CONNECT_TIME);

    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;

private:
    const EndMark& endMark_;
    const std::shared_ptr<OdbcSession> session_;
    const OdbcDriver driver_;
};

}  // namespace intake
