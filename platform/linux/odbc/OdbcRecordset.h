#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/Database.h"
#include "platform/linux/odbc/OdbcColumn.h"
#include "platform/linux/odbc/OdbcStatement.h"

namespace intake {

/// The records of a query, fetched from the driver.
class OdbcRecordset final : public Recordset {
public:
    static constexpr std::chrono::seconds FIRST_RECORD_TIME{30};

    /// Runs the query, which is cancelled when its first record is not there within `limit`. Throws
    /// PlatformError, also when it returns no records. The session outlives the recordset.
    OdbcRecordset(const OdbcSession& session, const OdbcDriver& driver, const std::string& query,
                  const EndMark& endMark, std::chrono::milliseconds limit = FIRST_RECORD_TIME);

    size_t fieldCount() override { return columns_.size(); }
    std::string_view fieldName(size_t field) override { return columns_[field].name(); }
    std::optional<size_t> findField(const std::string& name) override;
    void moveFirst() override {}
    void moveNext() override;
    bool atEnd() override { return atEnd_; }
    bool value(size_t field, FieldValue& value) override;

private:
    void describeColumns();
    void bindColumns(SQLULEN records);
    void fetchMore();
    void readUpTo(size_t field);

    OdbcStatement statement_;
    std::vector<OdbcColumn> columns_;
    uint64_t record_ = 0;  // counted from 1
    SQLULEN fetched_ = 0;  // so many records were fetched together
    SQLULEN place_ = 0;    // of the record among them
    size_t read_ = 0;      // so many columns of it were read
    bool atEnd_ = false;
};

}  // namespace intake
