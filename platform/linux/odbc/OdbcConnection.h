#pragma once

#include "platform/Database.h"
#include "platform/EndMark.h"
#include "platform/linux/odbc/OdbcDriver.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// A connection by unixODBC and a driver that the user has installed. Connection strings are those
/// of ODBC. An end mark ends a running query within a fraction of a second, a fetch with the
/// record; an attempt to connect ends by itself within 15 seconds.
class OdbcConnection final : public Connection {
public:
    explicit OdbcConnection(const EndMark& endMark);
    ~OdbcConnection() override;
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    void open(const std::string& connectionString) override;
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;
    std::vector<Error> errors() override { return errors_; }

private:
    [[noreturn]] void fail(const OdbcHandle& handle);

    const EndMark& endMark_;
    OdbcHandle environment_;
    OdbcHandle connection_;
    OdbcDriver driver_;
    bool connected_ = false;
    std::vector<Error> errors_;
};

}  // namespace intake
