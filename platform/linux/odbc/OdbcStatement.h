#pragma once

#include <string>

#include "platform/EndMark.h"
#include "platform/linux/odbc/OdbcDriver.h"
#include "platform/linux/odbc/OdbcHandle.h"
#include "platform/linux/odbc/OdbcSession.h"

namespace intake {

/// One statement of a session, which outlives it. What fails throws PlatformError; so does what the
/// end mark ends.
class OdbcStatement {
public:
    OdbcStatement(const OdbcSession& session, const OdbcDriver& driver, const EndMark& endMark);

    void execute(const std::string& query);

    /// Goes to the next record; false when there is none.
    bool fetch();

    const OdbcHandle& handle() const { return handle_; }
    const OdbcDriver& driver() const { return driver_; }

private:
    void check(SQLRETURN result) const;
    void throwIfEnded() const;

    const EndMark& endMark_;
    OdbcDriver driver_;
    OdbcHandle handle_;
};

}  // namespace intake
