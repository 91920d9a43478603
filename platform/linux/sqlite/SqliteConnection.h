#pragma once

#include <memory>
#include <string>

#include "formats/connection/sqlite_connection_string.h"
#include "platform/linux/base/OpenConnection.h"
#include "platform/linux/sqlite/SqliteSession.h"

namespace intake {

/// A connection to an SQLite database file. Statements that write do write; extensions are not
/// loaded. One worker thread.
class SqliteConnection final : public OpenConnection {
public:
    /// A file that is missing is not made. `endMark` outlives this object. Throws PlatformError.
    SqliteConnection(const SqliteSettings& settings, const EndMark& endMark);

    std::unique_ptr<Recordset> openRecordset(const std::string& query) override;

    /// The keys of the connection string that were ignored.
    std::vector<std::string> warnings() override;

private:
    const std::vector<std::string> ignored_;
    const EndMark& endMark_;
    std::unique_ptr<SqliteSession> session_;
};

}  // namespace intake
