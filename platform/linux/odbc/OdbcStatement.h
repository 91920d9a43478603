#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "formats/source/EndMark.h"
#include "platform/linux/odbc/OdbcDriver.h"
#include "platform/linux/odbc/OdbcHandle.h"
#include "platform/linux/odbc/OdbcSession.h"
#include "platform/linux/odbc/QueryCanceller.h"

namespace intake {

/// One statement of a session, which outlives it. What fails throws PlatformError; so does what the
/// end mark ends.
class OdbcStatement {
public:
    /// The first record has to be there within `limit`.
    OdbcStatement(const OdbcSession& session, const OdbcDriver& driver, const EndMark& endMark,
                  std::chrono::milliseconds limit);
    OdbcStatement(const OdbcStatement&) = delete;  // the driver knows its members' addresses
    OdbcStatement& operator=(const OdbcStatement&) = delete;

    void execute(const std::string& query);

    /// Lets every fetch take so many records at a time into bound columns.
    void takeAtATime(SQLULEN records);

    /// Goes to the next records; how many there are, 0 behind the last.
    SQLULEN fetch();

    /// Goes to one of the records that were fetched together, so that its values can be asked for.
    void goTo(SQLULEN record) const;

    /// Reads a value, or its next part, of one column of the record.
    SQLRETURN getData(SQLUSMALLINT column, SQLSMALLINT cType, char* out, size_t room,
                      SQLLEN& length) const;

    const OdbcHandle& handle() const { return handle_; }
    const OdbcDriver& driver() const { return driver_; }

private:
    template <class Call>
    SQLRETURN run(Call call) const;
    void check(SQLRETURN result) const;
    void checkRecords() const;
    void setAttribute(SQLINTEGER attribute, SQLPOINTER value) const;

    const EndMark& endMark_;
    OdbcDriver driver_;
    const std::chrono::milliseconds limit_;
    OdbcHandle handle_;
    mutable QueryCanceller canceller_;  // goes before what it cancels
    SQLULEN fetched_ = 1;  // the driver sets it when it takes several records at a time
    std::vector<SQLUSMALLINT> states_;
};

}  // namespace intake
