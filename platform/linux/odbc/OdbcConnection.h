#pragma once

#include <functional>
#include <memory>

#include "formats/source/EndMark.h"
#include "platform/Database.h"
#include "platform/linux/odbc/OdbcDriver.h"
#include "platform/linux/odbc/OdbcSession.h"

namespace intake {

/// A connection by unixODBC and a driver that the user has installed. Connection strings are those
/// of ADO. A server that does not answer is given 15 seconds. The end mark ends an attempt to
/// connect and a running query within a fraction of a second, and a fetch before its next record.
class OdbcConnection final : public Connection {
public:
    explicit OdbcConnection(const EndMark& endMark) : endMark_(endMark) {}

    void open(const std::string& connectionString) override;
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;
    std::vector<Error> errors() override { return errors_; }

private:
    void connect(const std::string& connectionString);
    void keepErrors(const std::function<void()>& step);

    const EndMark& endMark_;
    std::shared_ptr<OdbcSession> session_ = std::make_shared<OdbcSession>();
    OdbcDriver driver_;
    std::vector<Error> errors_;
};

}  // namespace intake
